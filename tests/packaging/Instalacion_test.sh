#!/usr/bin/env bash
# Installs a build into a folder of the test's own, builds and runs the example host against it, by CMake and by
# pkg-config, and takes everything out again: Instalacion_test.sh SOURCES BUILD
set -euo pipefail
fuentes=$1 compilacion=$2
carpeta=$(mktemp -d)
trap 'rm -rf "$carpeta"' EXIT
cp "$compilacion/install_manifest.txt" "$carpeta/manifiesto" 2>/dev/null || true

cmake --install "$compilacion" --prefix "$carpeta/raiz" >/dev/null
mv "$compilacion/install_manifest.txt" "$carpeta/instalado"
[ ! -e "$carpeta/manifiesto" ] || mv "$carpeta/manifiesto" "$compilacion/install_manifest.txt"

esperado='AT260001 | 21/11/2026 | 86.42 | Queso añejo con grietas'
comprueba() { [ "$1" = "$esperado" ] || { echo "salió «$1»" >&2; exit 1; }; }

cmake -S "$fuentes/docs/ejemplo" -B "$carpeta/ejemplo" -DCMAKE_PREFIX_PATH="$carpeta/raiz" >/dev/null
cmake --build "$carpeta/ejemplo" >/dev/null
comprueba "$("$carpeta/ejemplo/anfitrion")"
echo "con find_package: $esperado"

export PKG_CONFIG_PATH=$(dirname "$(find "$carpeta/raiz" -name QVORComprasAtip.pc)")
read -ra opciones <<<"$(pkg-config --cflags --libs QVORComprasAtip sqlite3)"
g++ -std=c++20 "$fuentes/docs/ejemplo/anfitrion.cpp" "${opciones[@]}" -o "$carpeta/anfitrion"
comprueba "$(LD_LIBRARY_PATH=$(pkg-config --variable=libdir QVORComprasAtip) "$carpeta/anfitrion")"
echo "con pkg-config: $esperado"

if readelf -Ws --dyn-syms "$carpeta"/raiz/lib*/libQVORComprasAtip.so "$carpeta"/raiz/lib*/*/libQVORComprasAtip.so 2>/dev/null \
    | awk '$5 == "GLOBAL" && $7 != "UND" && $7 != "ABS" { sub(/@.*/, "", $8); print $8 }' | sort -u \
    | grep -vxE 'Dll(CanUnloadNow|GetClassObject|RegisterServer|UnregisterServer)'; then
    echo "la biblioteca enseña más que sus entradas" >&2
    exit 1
fi

cmake -DMANIFIESTO="$carpeta/instalado" -P "$fuentes/cmake/desinstala.cmake"
[ -z "$(find "$carpeta/raiz" -type f 2>/dev/null)" ] || { find "$carpeta/raiz" -type f >&2; exit 1; }
echo "desinstalado: no queda nada"
