#!/usr/bin/env bash
# One visit to the window with a real mouse on a display in memory: log in, upload a personal file, see it, delete it,
# close. The places to click come from the accessibility tree.   ventana_prueba.sh PROJECT BIN PYTHON
set -euo pipefail
if [ -z "${EN_SESION:-}" ]; then
  EN_SESION=1 exec dbus-run-session -- "$0" "$@"
fi
proyecto=$1 bin=$2 python=$3
. "$proyecto/scripts/demo.sh"
. "$proyecto/scripts/ventana.sh"
casa=$(mktemp -d)/casa

control() { "$python" "$proyecto/tests/sistema/control.py" "$@" 2>/dev/null; }
# A window that is being laid out moves its controls: two looks have to agree.
localizar() { lugar=$(control sitio "$@") && [ "$lugar" = "$(control sitio "$@")" ]; }
pulsar() { # pulsar ROLE NAME
  esperar 30 localizar "$@" || { control arbol; fallo "no control: $*"; }
  # shellcheck disable=SC2086  # two numbers
  xdotool mousemove $lugar click 1
}
# escribir_en ROLE NAME TEXT: a loaded machine may lose a key, so it is typed anew until it stands there.
escribir_en() {
  pulsar "$1" "$2"
  esperar 60 escrito "$@" || { control arbol; fallo "cannot type into: $1 $2"; }
}
escrito() {
  tecla ctrl+a
  escribir "$3"
  [ "$(control texto "$1" "$2")" = "$3" ]
}
guardados() { copias ana listar --tipo personales; }
guardado() { guardados | grep -q "$1"; }
borrado() { ! guardado "$1"; }

acabar() {
  [ -z "${programa:-}" ] || kill "$programa" 2>/dev/null || true
  [ -z "${pantalla:-}" ] || cerrar_pantalla
  [ -z "${servicio:-}" ] || kill "$servicio" 2>/dev/null || true
  rm -rf "${casa%/casa}"
}

preparar_casa
alta ana C0001 'Ana Ruiz'
arrancar_servicio
trap acabar EXIT
abrir_pantalla 1280x900
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
unset QT_QPA_PLATFORM  # the real display, whatever the other tests use
archivo="$casa/personal/Carta de la señora Núñez.bin"
head -c 700000 /dev/urandom >"$archivo"

paso 'log in'
abrir_programa "$casa/ventana.log"
pulsar 'push button' 'Aceptar|OK'  # no company is active
escribir_en text 'Nombre usuario:?' ana
pulsar 'password text' 'Clave.*'
escribir Ana2024
pulsar 'push button' 'Aceptar|OK'
esperar_ventana 'Usuario: ana '

paso 'upload a personal file and see it'
pulsar 'radio button' 'Archivos personales'
pulsar 'push button' 'Subir un archivo personal'
esperar_ventana 'Elegir un archivo'
escribir_en text 'Nombre:?|File &?name:?' "$archivo"
tecla Return
pulsar 'push button' 'Aceptar|OK'
esperar 30 control hay "$(basename "$archivo")" || { control arbol; fallo "the list does not show it"; }
guardado Núñez || fallo 'the service does not have it'

paso 'delete it'
pulsar 'table cell' '.*Núñez.bin'
pulsar 'push button' Eliminar
pulsar 'push button' 'S[ií]|Yes'
esperar 30 borrado Núñez || fallo 'the service still has it'

paso 'close'
esperar_ventana 'Usuario: ana '
tecla alt+F4
wait "$programa" || fallo "the program ended with $?"
programa=
