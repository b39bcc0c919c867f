# The Debian packages that building, testing and running need, and the one way to install what is missing.
# Sourced by ./test and ./run; each list has its reason in docs/dependencies.md.

paquetes_construir=(g++ cmake ninja-build pkg-config
  libzip-dev libdeflate-dev zlib1g-dev libpugixml-dev libcurl4-openssl-dev libcpp-httplib-dev libssl-dev
  libsqlite3-dev libcli11-dev libspdlog-dev nlohmann-json3-dev pybind11-dev python3-dev ca-certificates
  qt6-base-dev libqt6svg6 qt6-svg-dev qt6-translations-l10n fonts-dejavu-core)
paquetes_pantalla=(xvfb xauth xdotool openbox imagemagick)  # the window where there is no display
paquetes_probar=(googletest libgtest-dev libgmock-dev python3 unzip zip openssl procps
  desktop-file-utils appstream dbus at-spi2-core gir1.2-atspi-2.0 python3-gi "${paquetes_pantalla[@]}")
paquetes_todo=(clang-14 clang-tidy-14 clang-format-14 libclang-rt-14-dev libbenchmark-dev liblmdb-dev libdb5.3-dev pigz p7zip-full)

# instalar_paquetes NAME...: installs those that are not there, as root or through sudo.
instalar_paquetes() {
  local faltan=() nombre
  for nombre in "$@"; do
    [ "$(dpkg-query -W -f='${Status}' "$nombre" 2>/dev/null)" = 'install ok installed' ] || faltan+=("$nombre")
  done
  [ ${#faltan[@]} -eq 0 ] && return 0
  local como=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "These packages are missing and there is no sudo to install them: ${faltan[*]}" >&2
      return 1
    fi
    como=(sudo)
  fi
  echo "Installing: ${faltan[*]}"
  "${como[@]}" apt-get update -qq
  "${como[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${faltan[@]}"
}
