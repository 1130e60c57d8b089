#!/usr/bin/env bash
# Branch coverage of the core by its own tests and by those of whole saves, without windows:
#     packaging/cobertura.sh [--lineas]
# With --lineas also the lines that have a branch nobody took. Takes a few minutes; not part of CI.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
packaging/dependencias.sh pruebas medidas

# The edges by which an exception may leave a call, which every call has, are not counted.
cmake -G Ninja -B build/cobertura -DCMAKE_BUILD_TYPE=Debug -DATIPICOS_GUI=OFF -DCMAKE_CXX_FLAGS="--coverage -g1" \
    ${CMAKE_CXX_COMPILER_LAUNCHER:+-DCMAKE_CXX_COMPILER_LAUNCHER=$CMAKE_CXX_COMPILER_LAUNCHER} >/dev/null
carpetas=(runtime context charges posting editor browser)
pruebas=("${carpetas[@]/#/tests/}")
pruebas=("${pruebas[@]/%//all}")
enteras=(BarridoEliminar_test BarridoGuardar_test Escenario_test)
ninja -C build/cobertura --quiet "${pruebas[@]}" pruebas_integracion
find build/cobertura -name '*.gcda' -delete
for carpeta in "${carpetas[@]}"; do
    ctest --test-dir "build/cobertura/tests/$carpeta" --parallel "$(nproc)" --output-on-failure --quiet
done
for entera in "${enteras[@]}"; do # not by ctest, whose time limit is for builds that count nothing
    LC_ALL=C.UTF-8 TZ=Europe/Madrid build/cobertura/tests/integracion/pruebas_integracion "$entera" --gtest_brief=1
done
filtros=()
for carpeta in "${carpetas[@]}"; do filtros+=(--filter "$carpeta/"); done
informe=(gcovr --root . --object-directory build/cobertura "${filtros[@]}" --exclude-throw-branches
    --exclude-unreachable-branches --exclude-directories '.*/CompilerIdCXX' build/cobertura)
"${informe[@]}" --branches --sort-percentage
if [ "${1:-}" = --lineas ]; then
    "${informe[@]}" --json - | python3 -c '
import json, sys
for fichero in json.load(sys.stdin)["files"]:
    for linea in fichero["lines"]:
        if not linea["gcovr/noncode"] and any(rama["count"] == 0 for rama in linea["branches"]):
            print(fichero["file"] + ":" + str(linea["line_number"]))'
fi
