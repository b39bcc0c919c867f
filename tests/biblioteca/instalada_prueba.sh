#!/usr/bin/env bash
# Installs the library into a folder of its own, builds the example against it in both ways, and runs it on a company.
#
#     instalada_prueba.sh SOURCES BUILD COMPILER FLAGS LIBDIR
set -euo pipefail
fuentes=$1 construido=$2 compilador=$3 opciones=$4 libdir=$5
banco=$(mktemp -d)
trap 'rm -rf "$banco"' EXIT

fallar() { echo "biblioteca: $*" >&2; exit 1; }

prefijo=$banco/instalado
cmake --install "$construido" --prefix "$prefijo" --component enlace >/dev/null
mkdir -p "$prefijo/share"
cp -r "$construido/share/tarvoline" "$prefijo/share/"

# The program directory and the headers stand on their own: the sources are out of sight.
cp -r "$fuentes/examples/asiento" "$banco/ejemplo"
cmake -S "$banco/ejemplo" -B "$banco/cmake" -G Ninja -DCMAKE_CXX_COMPILER="$compilador" -DCMAKE_CXX_FLAGS="$opciones" \
  -DCMAKE_PREFIX_PATH="$prefijo" >"$banco/registro" 2>&1 && cmake --build "$banco/cmake" >>"$banco/registro" 2>&1 ||
  { cat "$banco/registro"; fallar "the example does not build with the CMake package"; }
export PKG_CONFIG_PATH=$prefijo/$libdir/pkgconfig
read -ra con < <(pkg-config --cflags --libs tarvoline-enlace)
# shellcheck disable=SC2086
"$compilador" $opciones -std=c++20 -Wall -Wextra -Werror "$banco/ejemplo/asiento.cpp" -o "$banco/asiento" "${con[@]}" ||
  fallar "the example does not build with pkg-config"

soname=$(objdump -p "$prefijo/$libdir/libtarvoline-enlace.so" | awk '/SONAME/ {print $2}')
[[ $soname =~ ^libtarvoline-enlace\.so\.[0-9]+$ ]] || fallar "the soname is $soname"

export HOME=$banco/casa XDG_CONFIG_HOME=$banco/casa/c XDG_DATA_HOME=$banco/casa/d XDG_STATE_HOME=$banco/casa/s
export TMPDIR=$banco/tmp
mkdir -p "$HOME" "$TMPDIR" "$banco/datos"
"$construido/bin/tarvoline-ajustes" grabar DATOS_DIR "$banco/datos/"
export LD_LIBRARY_PATH=$prefijo/$libdir
"$banco/asiento" Ninguna 2>"$banco/error" && fallar "a company that is not there was opened"
grep -q "Empresa Veldorix no existe" "$banco/error" || fallar "the error of the link did not arrive: $(cat "$banco/error")"
"$banco/cmake/asiento" Demo 2026 >"$banco/salida" || fallar "the example failed on a new company"
"$banco/asiento" Demo >"$banco/salida" || fallar "the example failed on the company"
cat "$banco/salida"
[ "$(grep -c "Venta de contado" "$banco/salida")" = 2 ] || fallar "the statement has not both sales"
grep -q "	242$" "$banco/salida" || fallar "the balance of the statement is not 242"
