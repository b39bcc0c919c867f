#!/usr/bin/env bash
# Takes the pictures of docs/pantallas: the real program on a display in memory, driven by keys, against a service with a
# year of copies.   scripts/pantallas.sh [BUILD]   (default build/release)
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/paquetes.sh
. scripts/demo.sh
. scripts/ventana.sh

bin=$(realpath "${1:-build/release}")/bin
casa=$(mktemp -d)
destino=$PWD/docs/pantallas

# The service with ana's copies; luis has none and marta more than her account may hold.
preparar_servicio() {
  preparar_casa
  alta ana C0001 'Ana Ruiz'
  alta luis C0001 'Luis Gil'
  alta marta C0002 'Marta Vidal'
  python3 scripts/muestra.py "$casa/servicio" ana
  python3 scripts/muestra.py "$casa/servicio" marta
  truncate -s 900M "$casa/servicio/datos/U0000003/19"
  arrancar_servicio >/dev/null
}

# The active company's user is the one that the window opens with.
empresa_de() { # empresa_de USER
  [ -d "$casa/empresas/$1" ] || "$bin/tarvoline-demo" --carpeta "$casa/empresas/$1" --nombre 'Panadería Núñez' --usuario "$1" --clave "${1^}2024" \
    --adjuntos "$casa/Documentación" >/dev/null
  # A folder that reads well in the picture.
  LC_ALL=C sed -i "s#$casa/Doc#/home/$1/Doc#" "$casa/empresas/$1"/*.QZT
  "$bin/tarvoline-ajustes" grabar ACTIVE "$(find "$casa/empresas/$1" -maxdepth 1 -iname '*.QZT')" -p VELDORIX
}

# One life of the program, in a window that stands where it can be looked at: abrir COLOURS LANGUAGE USER [BOX]
# BOX: the name of a box that comes first.
abrir() {
  export TARVOLINE_TEMA=$1
  "$bin/tarvoline-ajustes" grabar language "$2"
  empresa_de "$3"
  abrir_programa "$casa/ventana.log"
  if [ -n "${4:-}" ]; then
    esperar_ventana "$4"
    tecla Return
  fi
  esperar_ventana " $3 "
  xdotool getactivewindow windowsize 1024 700 windowmove 40 40
  esperar 10 en_su_sitio
  encuadrar
}
en_su_sitio() { xdotool getactivewindow getwindowgeometry --shell | tr '\n' ' ' | grep -q 'X=4.*WIDTH=1024 HEIGHT=700'; }
cerrar() {
  kill "$programa"
  wait "$programa" 2>/dev/null || true
}
retratar() { foto "$destino/$1.png"; }
# The same once it looks otherwise than an earlier picture: retratar_cambio NAME EARLIER
retratar_cambio() { esperar 15 otra_imagen "$1" "$2" || { echo "$1 looks as $2" >&2; return 1; }; }
otra_imagen() { # true when the picture just taken differs
  retratar "$1" && ! compare -metric AE "$destino/$1.png" "$destino/$2.png" null: 2>/dev/null
}

tomar_espanol() {
  abrir claro español.qzi ana
  elegir 400 190
  retratar principal
  tras ctrl+u
  retratar entrada
  tras Escape
  tras ctrl+i
  retratar espacio
  tras Escape
  tras ctrl+comma
  retratar configuracion
  tras Escape
  tras ctrl+t
  retratar terminos
  tras Escape
  tecla ctrl+4
  retratar_cambio historico principal
  tecla ctrl+1
  elegir 400 190
  tras ctrl+Delete
  retratar pregunta
  tras Escape
  truncate -s 300M "$casa/personal/Grabación de la junta.mp4"
  foto_en_marcha "$destino/transferencia.png" "$casa/personal/Grabación de la junta.mp4" 120000000
  cerrar
}

tomar_otras() {
  abrir oscuro español.qzi ana
  elegir 400 190
  retratar principal-oscura
  tras ctrl+comma
  retratar configuracion-oscura
  tras Escape
  tras ctrl+u
  retratar entrada-oscura
  tras Escape
  cerrar
  abrir claro english.qzi ana
  elegir 400 190
  retratar principal-ingles
  tras ctrl+comma
  retratar configuracion-ingles
  tras Escape
  tras ctrl+t
  retratar terminos-ingles
  tras Escape
  cerrar
  abrir claro español.qzi luis
  retratar vacia
  tecla ctrl+4
  retratar_cambio historico-vacio vacia
  cerrar
  abrir claro español.qzi marta '^Tarvoline$'
  tras ctrl+o
  retratar capacidad
  cerrar
}

# The service goes away while the window is open.
tomar_fallo() {
  abrir claro español.qzi ana
  kill "$servicio"
  wait "$servicio" || true
  tras F5
  retratar error
  cerrar
}

instalar_paquetes "${paquetes_pantalla[@]}"
mkdir -p "$destino"
preparar_servicio
abrir_pantalla 1120x800
trap 'cerrar_pantalla; kill "$servicio" 2>/dev/null || true; rm -rf "$casa"' EXIT
tomar_espanol
tomar_otras
tomar_fallo
ls -l "$destino"
