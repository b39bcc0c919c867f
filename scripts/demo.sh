# The demonstration that ./run gives: real programs, real files, a real service process on loopback. Sourced by ./run.

paso() { printf '\n== %s\n' "$*"; }
fallo() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }
tamano() { stat -c %s "$1" | numfmt --to=iec --suffix=B; }
milisegundos() { echo $(($(date +%s%N) / 1000000)); }

# medir WORDS... -- COMMAND...: runs the command and tells how long it took.
medir() {
  local que=()
  while [ "$1" != -- ]; do que+=("$1"); shift; done
  shift
  local antes
  antes=$(milisegundos)
  "$@" || fallo "${que[*]} (exit $?)"
  printf '%s: %s ms\n' "${que[*]}" "$(($(milisegundos) - antes))"
}

# The demo's own home, settings and temporary folder.
preparar_casa() {
  rm -rf "$casa"
  mkdir -p "$casa"/{home,config,datos,estado,tmp,servicio,empresas,personal}
  export HOME=$casa/home XDG_CONFIG_HOME=$casa/config XDG_DATA_HOME=$casa/datos XDG_STATE_HOME=$casa/estado
  chmod 700 "$casa/tmp"
  export TMPDIR=$casa/tmp
  unset http_proxy https_proxy all_proxy HTTP_PROXY HTTPS_PROXY ALL_PROXY
}

alta() { # alta USER ACCOUNT NAME: a user of the service whose key is made of the name; the account has 1 GB
  "$bin/tarvoline-servicio" usuario --raiz "$casa/servicio" --alta "$1" --clave "${1^}2024" --cuenta "$2" --gb 1 \
    --etiqueta "$3" >/dev/null || fallo "user $1"
}

# Starts the service and points the settings at it.
arrancar_servicio() {
  mkfifo "$casa/url"
  "$bin/tarvoline-servicio" --raiz "$casa/servicio" --puerto 0 >"$casa/url" 2>"$casa/servicio.log" &
  servicio=$!
  trap 'kill $servicio ${programa:-} ${gestor:-} ${pantalla:-} 2>/dev/null || true' EXIT
  local url
  read -r url <"$casa/url" || fallo 'the service did not start'
  echo "$url"
  url=${url#http://}
  "$bin/tarvoline-ajustes" grabar IP "${url%%/*}" -s NETBACKUP -p VELDORIX
  "$bin/tarvoline-ajustes" grabar DATOS_DIR "$casa/empresas/" -p VELDORIX
}

copias() { # copias USER ARGUMENTS...
  local usuario=$1
  shift
  TARVOLINE_CLAVE=${usuario^}2024 "$bin/tarvoline-copias" --usuario "$usuario" "$@"
}

# Company file against company file but for the two digits of the number, table against table, image against image. (What
# the books say is compared through the link.)
comparar() {
  local original=$1 copia=$2 n=0 numero_original numero_copia archivo pareja
  numero_original=$(head -c 2 "$original")
  numero_copia=$(head -c 2 "$copia")
  [ "$numero_original" != "$numero_copia" ] || fallo "both companies bear number $numero_copia"
  cmp -i 2 "$original" "$copia" || fallo 'the company files differ'
  for archivo in "$casa"/empresas/?????"$numero_original".*; do
    pareja=$(basename "$archivo")
    pareja=$casa/empresas/${pareja:0:5}$numero_copia${pareja:7}
    cmp "$archivo" "$pareja" || fallo "$pareja differs"
    n=$((n + 1))
  done
  [ "$n" -gt 0 ] || fallo 'no table to compare'
  while IFS= read -r archivo; do
    cmp "$archivo" "${copia%.*}/$(basename "$archivo")" || fallo "image $(basename "$archivo") differs"
    n=$((n + 1))
  done < <(find "${original%.*}" -type f)
  echo "$((n + 1)) files of number $numero_original equal those of number $numero_copia"
}

copiar_empresa() {
  paso 'A company is made and marked as pending'
  "$bin/tarvoline-demo" --carpeta "$casa/empresas" --nombre 'Panadería Núñez' --usuario ana --clave Ana2024 \
    --adjuntos "$casa/Documentación" ||
    fallo 'the demo company'
  original=$(find "$casa/empresas" -maxdepth 1 -iname '*.QZT')
  "$bin/tarvoline-ajustes" grabar EMP1 "\"$original\"" -s NETBACKUP -p VELDORIX

  paso 'The unattended run packs it and sends it piece by piece'
  medir 'tarvoline 1' -- "$bin/tarvoline" 1
  [ -z "$("$bin/tarvoline-ajustes" leer EMP1 -s NETBACKUP -p VELDORIX | tr -d ' ')" ] || fallo 'it is still pending'
  copias ana listar
}

restaurar_empresa() {
  paso 'It comes back beside the original, under a number of its own'
  local archivada
  archivada=$(copias ana listar --json | sed -n 's/.*"nombre": "\(.*\)",/\1/p')
  medir "$archivada" -- copias ana restaurar "$archivada"
  restaurada=$(find "$casa/empresas" -maxdepth 1 -iname '*~1.QZT')
  [ -n "$restaurada" ] || fallo 'there is no restored company'
  comparar "$original" "$restaurada"
  medir 'the same entries and balances' -- "$bin/tarvoline-demo" comparar "$original" "$restaurada"
  "$bin/qztabla" verificar "$restaurada" >"$casa/verificar.txt" || fallo "the restored books, see $casa/verificar.txt"
  echo 'the restored books are sound: tables, keys and totals'
}

mover_personales() {
  paso 'A second user of the account: a personal file up and down again'
  local archivo="$casa/personal/Carta a Doña Íñiga.bin"
  head -c 3000000 /dev/urandom >"$archivo"
  medir "up, $(tamano "$archivo")" -- copias luis subir --tipo personales "$archivo"
  medir 'down' -- copias luis bajar --tipo personales "$(basename "$archivo")" -o "$casa/personal/vuelta.bin"
  cmp "$archivo" "$casa/personal/vuelta.bin" || fallo 'the personal file came back changed'
  copias luis borrar --tipo personales "$(basename "$archivo")"

  paso 'History and space'
  copias luis historico
  copias ana espacio
}

# The window on the account of the demo company, from where the person at the display goes on; without a display it is
# started on one in memory and leaves a picture of itself in mid-transfer.
mostrar_ventana() {
  "$bin/tarvoline-ajustes" grabar ACTIVE "$original" -p VELDORIX
  if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    paso 'The window, on the demo account (ana, Ana2024); closing it ends the demo'
    "$bin/tarvoline" 2 || fallo "the window (exit $?)"
    return
  fi
  paso 'The window on a display in memory'
  truncate -s 400M "$casa/personal/Grabación de la junta.bin"
  abrir_pantalla 1180x800
  abrir_programa "$casa/ventana.log"
  esperar_ventana ' ana ' || fallo 'the window did not open'
  encuadrar
  foto_en_marcha "$casa/ventana.png" "$casa/personal/Grabación de la junta.bin" 150000000
  tecla Escape
  kill "$programa"
  wait "$programa" || true
  cerrar_pantalla
  echo 'A picture of the window at work: .run/ventana.png'
}

demostracion() {
  bin=$1/build/release/bin
  casa=$1/.run
  preparar_casa
  paso 'The embedded service, with two users of one account'
  alta ana C0001 'Ana Ruiz'
  alta luis C0001 'Luis Gil'
  arrancar_servicio
  copiar_empresa
  restaurar_empresa
  mover_personales
  mostrar_ventana
  kill "$servicio"
  wait "$servicio" || fallo 'the service did not end cleanly'
  trap - EXIT
  printf '\nDone: the company went up to the service and came back whole. What it left to look at lies in %s\n' \
    '.run/'
}
