# A display of its own with the program's window on it, driven by keys, and pictures of it. Sourced by ./run,
# scripts/pantallas.sh and tests/sistema/ventana_prueba.sh.

# abrir_pantalla WIDTHxHEIGHT: a display in memory with a window manager; sets DISPLAY. A server that does not come up (two
# that start at once may want the same number) is tried again.
abrir_pantalla() {
  local _
  export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$TMPDIR}
  for _ in 1 2 3; do
    if arrancar_pantalla "$1"; then
      return 0
    fi
    cerrar_pantalla
  done
  echo 'no display in memory' >&2
  return 1
}
arrancar_pantalla() {
  local lugar numero
  lugar=$(mktemp -d)
  mkfifo "$lugar/numero"
  gestor=
  Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp 3>"$lugar/numero" 2>"$lugar/errores" &
  pantalla=$!
  read -r numero <"$lugar/numero" || { cat "$lugar/errores" >&2; rm -r "$lugar"; return 1; }
  rm -r "$lugar"
  export DISPLAY=:$numero
  openbox >/dev/null 2>&1 &
  gestor=$!
  esperar 30 xdotool get_desktop  # the window manager is at work
}

cerrar_pantalla() {
  # shellcheck disable=SC2086  # there may be no window manager
  kill $gestor "$pantalla" 2>/dev/null || true
  # shellcheck disable=SC2086
  wait $gestor "$pantalla" 2>/dev/null || true
  unset DISPLAY
}

# esperar SECONDS COMMAND...: until the command succeeds.
esperar() {
  local hasta=$((SECONDS + $1))
  shift
  until "$@" >/dev/null 2>&1; do
    [ "$SECONDS" -lt "$hasta" ] || return 1
    sleep 0.05
  done
}

# The window whose name holds this regular expression takes the keys.
con_foco() { xdotool getactivewindow getwindowname | grep -Eq -- "$1"; }
esperar_ventana() { esperar 30 con_foco "$1" || { echo "no window: $1" >&2; return 1; }; }

# Another window than the one that takes the keys now, once what follows has been pressed: tras KEY...
tras() {
  local antes
  antes=$(xdotool getactivewindow)
  tecla "$@"
  esperar 30 otra_ventana "$antes" || { echo "nothing opens or closes after $*" >&2; return 1; }
}
otra_ventana() {
  local ahora
  ahora=$(xdotool getactivewindow) && [ "$ahora" != "$1" ]
}

tecla() { xdotool key --clearmodifiers "$@"; }
# elegir X Y: a click on a place of the window; the pointer does not stay there.
elegir() { xdotool mousemove --window "$(xdotool getactivewindow)" "$1" "$2" click 1 mousemove 0 0; }
escribir() { xdotool type --delay 80 -- "$1"; }

# abrir_programa LOG: the window of the program in the background; sets `programa`.
abrir_programa() {
  "$bin/tarvoline" 2 >"$1" 2>&1 &
  programa=$!
}

# entrar USER: the login dialog, which stands open.
entrar() {
  escribir "$1"
  tecla Tab
  escribir "${1^}2024"
  tecla Return
}

# encuadrar: pictures from here on show what stands inside the window that takes the keys now.
encuadrar() {
  local WINDOW X Y WIDTH HEIGHT SCREEN
  eval "$(xdotool getactivewindow getwindowgeometry --shell)"
  eval "$(xdotool mousemove --window "$WINDOW" 0 0 getmouselocation --shell)"
  encuadre=${WIDTH}x$HEIGHT+$X+$Y
}

# foto FILE: taken once two looks agree.
foto() {
  local antes='' ahora _
  for _ in $(seq 40); do
    import -window root -crop "$encuadre" +repage png:"$1.nueva"
    ahora=$(identify -format '%#' "png:$1.nueva")
    [ "$ahora" != "$antes" ] || break
    antes=$ahora
    sleep 0.1
  done
  convert "png:$1.nueva" -strip -dither None -colors 256 -define png:compression-level=9 "png8:$1"
  rm "$1.nueva"
}

# foto_en_marcha PICTURE FILE BYTES: uploads a personal file from the view of personal files and takes the picture when the
# service holds as many bytes of it. The service rests while the picture is taken.
foto_en_marcha() {
  tecla ctrl+3
  tras ctrl+o
  sleep 0.3
  escribir "$2"
  tecla Return
  esperar 30 llegados "$3"
  kill -STOP "$servicio"
  sleep 0.3
  foto "$1"
  kill -CONT "$servicio"
}
llegados() { [ -n "$(find "$casa/servicio/datos" -type f -newer "$casa/ventana.log" -size +"$1"c)" ]; }
