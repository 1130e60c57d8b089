#!/usr/bin/env bash
# Branch coverage of the core by the tests without windows: packaging/cobertura.sh [--lineas]
# With --lineas also the lines of each file that have a branch nobody took. Takes a few minutes; not part of CI.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
command -v gcovr >/dev/null || { echo "Falta gcovr: apt-get install gcovr" >&2; exit 1; }

# Optimised for debugging: the branches are those of the source. Exception edges, which every call has, are left out.
cmake -G Ninja -B build/cobertura -DCMAKE_BUILD_TYPE=Debug -DATIPICOS_GUI=OFF -DCMAKE_CXX_FLAGS="--coverage -g1" \
    ${CMAKE_CXX_COMPILER_LAUNCHER:+-DCMAKE_CXX_COMPILER_LAUNCHER=$CMAKE_CXX_COMPILER_LAUNCHER} >/dev/null
ninja -C build/cobertura --quiet
find build/cobertura -name '*.gcda' -delete
ATIPICOS_SEMILLAS=1 ctest --test-dir build/cobertura --parallel "$(nproc)" --output-on-failure --quiet

carpetas=(runtime context charges posting editor browser)
filtros=()
for carpeta in "${carpetas[@]}"; do filtros+=(--filter "$carpeta/"); done
informe=(gcovr --root . --object-directory build/cobertura "${filtros[@]}" --exclude-throw-branches
    --exclude-unreachable-branches build/cobertura)
"${informe[@]}" --branches
[ "${1:-}" != --lineas ] || "${informe[@]}" --json-pretty --output build/cobertura/cobertura.json
