#!/usr/bin/env bash
# The data folder on a network share, served on loopback: a lock that a workstation takes over the protocol is seen by
# this program at the file, and the reverse. Needs root, and the packages samba and python3-impacket.
#   tests/red/samba.sh [BUILD]   (default build/release)
set -euo pipefail
cd "$(dirname "$0")/../.."
cerrojo=$(realpath "${1:-build/release}")/tests/cerrojo
lugar=$(mktemp -d)
puerto=4455 clave=tabla
mkdir "$lugar"/{datos,privado,estado,cache,cerrojos,pid}
chmod 700 "$lugar/privado"
cat >"$lugar/smb.conf" <<CONF
[global]
  smb ports = $puerto
  interfaces = lo
  bind interfaces only = yes
  disable netbios = yes
  server role = standalone server
  private dir = $lugar/privado
  state directory = $lugar/estado
  cache directory = $lugar/cache
  lock directory = $lugar/cerrojos
  pid directory = $lugar/pid
  log file = $lugar/smbd.log
  oplocks = no
  level2 oplocks = no
  posix locking = yes
[datos]
  path = $lugar/datos
  read only = no
CONF

acabar() {
  kill "$smbd" 2>/dev/null || true
  wait "$smbd" 2>/dev/null || true
  rm -rf "$lugar"
}
aqui() { "$cerrojo" "$lugar/datos/PLANC01.QZD" "$@"; }
alli() { /usr/bin/python3 tests/red/cliente.py "$puerto" "$(id -un)" "$clave" datos PLANC01.QZD "$@"; }
# primera NAME COMMAND...: starts one that holds its lock until `soltar NAME`; its answer is in $respuesta.
primera() {
  mkfifo "$lugar/$1.entrada" "$lugar/$1.salida"
  "${@:2}" <"$lugar/$1.entrada" >"$lugar/$1.salida" &
  exec {mano}>"$lugar/$1.entrada"
  read -r respuesta <"$lugar/$1.salida"
}
soltar() {
  exec {mano}>&-
  wait %% || true
  rm "$lugar/$1.entrada" "$lugar/$1.salida"
}
exigir() { # exigir WHAT ANSWER WANTED
  echo "$1: $2"
  [ "$2" = "$3" ] || { echo "wanted: $3" >&2; exit 1; }
}

printf '%s\n%s\n' "$clave" "$clave" | smbpasswd -c "$lugar/smb.conf" -s -a "$(id -un)" >/dev/null
setsid smbd -F --no-process-group -s "$lugar/smb.conf" </dev/null >/dev/null 2>&1 &  # it ends its process group with itself
smbd=$!
trap acabar EXIT
head -c 5640 /dev/zero >"$lugar/datos/PLANC01.QZD"
until alli 0 1 </dev/null >/dev/null 2>&1; do sleep 0.2; done

# The debit column of one month in record 2, and the one beside it.
columna='700 8' vecina='708 8'
# shellcheck disable=SC2086  # two numbers
{
  primera estacion alli $columna
  exigir 'the workstation takes a column' "$respuesta" 'tomado legible'
  exigir '  the same one here' "$(aqui $columna </dev/null || true)" 'negado ilegible'
  exigir '  the next one here' "$(aqui $vecina </dev/null || true)" 'tomado legible'
  soltar estacion
  primera programa aqui $columna
  exigir 'this program takes a column' "$respuesta" 'tomado legible'
  exigir '  the same one there' "$(alli $columna </dev/null || true)" 'negado ilegible'
  exigir '  the next one there' "$(alli $vecina </dev/null || true)" 'tomado legible'
  soltar programa
  exigir '  the same one there, once it is free' "$(alli $columna </dev/null || true)" 'tomado legible'
}
echo 'Locks are seen both ways.'
