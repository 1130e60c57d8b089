#!/usr/bin/env bash
# Installs the Debian packages that the build needs, if any is missing:
#     packaging/dependencias.sh [ventanas] [pruebas] [medidas] [ci]
#   (none)    what the program is built with, without windows
#   ventanas  also what its windows are built and shown with
#   pruebas   also what the tests and benchmarks are built and run with, a spooler for those of printing included
#   medidas   also what packaging/cobertura.sh and tests/fuzz/corre.sh need
#   ci        also what the checks of the source and of the package need, and what the component for Windows is built and
#             tried with
set -euo pipefail

paquetes=(cmake g++ libcli11-dev libcsv-dev libpq-dev libsqlite3-dev libssl-dev ninja-build
    nlohmann-json3-dev pkg-config unixodbc-dev zlib1g-dev)
for para in "$@"; do
    case "$para" in
        ventanas) paquetes+=(fonts-dejavu-core libqt6opengl6-dev qt6-base-dev qt6-charts-dev qt6-svg-dev qt6-translations-l10n) ;;
        pruebas)
            paquetes+=(at-spi2-core cups dbus dpkg-dev file libbenchmark-dev libboost-dev libgmock-dev libgtest-dev libsqliteodbc
                lld odbc-postgresql openbox pgbouncer poppler-utils postgresql python3 python3-pyatspi sqlite3 tdsodbc unzip x11-utils xauth
                xdotool xvfb)
            ;;
        medidas) paquetes+=(clang gcovr) ;;
        ci)
            paquetes+=(appstream clang-format clang-tidy desktop-file-utils g++-mingw-w64-x86-64-posix libwine-dev lintian
                make mingw-w64-tools tcl wine wine64)
            ;;
        *)
            echo "packaging/dependencias.sh: no se conoce «$para»" >&2
            exit 2
            ;;
    esac
done

faltan=()
for paquete in "${paquetes[@]}"; do
    estado=$(dpkg-query -W -f='${db:Status-Status}' "$paquete" 2>/dev/null || true)
    [ "$estado" = installed ] || faltan+=("$paquete")
done
[ ${#faltan[@]} -eq 0 ] && exit 0

echo "Faltan paquetes de Debian: ${faltan[*]}"
como=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "Hace falta ser root para instalarlos. Ejecute como root:" >&2
        echo "    apt-get install ${faltan[*]}" >&2
        exit 1
    fi
    como=(sudo)
fi
echo "Instalando…"
export DEBIAN_FRONTEND=noninteractive
"${como[@]}" apt-get update -qq
"${como[@]}" apt-get install -y -qq --no-install-recommends "${faltan[@]}" >/dev/null
