#!/usr/bin/env bash
# Fuzzes every target for so many seconds, each from its corpus: tests/fuzz/corre.sh [SECONDS] [TARGET…]
# What is found stays in build/fuzz/hallado/TARGET: inputs that reach new code, and those that break something.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
segundos=${1:-60}
shift || true
destinos=("$@")
[ ${#destinos[@]} -gt 0 ] || destinos=(csv fechas forma numeros plantilla reescritura)

packaging/dependencias.sh pruebas medidas
cmake --preset fuzz >/dev/null
ninja -C build/fuzz --quiet "${destinos[@]/#/fuzz_}"
for destino in "${destinos[@]}"; do
    hallado=build/fuzz/hallado/$destino
    mkdir -p "$hallado"
    echo "==> $destino"
    build/fuzz/tests/fuzz/fuzz_"$destino" -max_total_time="$segundos" -timeout=10 -max_len=8192 -print_final_stats=1 \
        -artifact_prefix="$hallado/rompe-" "$hallado" "tests/fuzz/corpus/$destino" 2>&1 \
        | grep -E '^stat::(number_of_executed_units|average_exec|peak_rss)|ERROR|broken|DONE|^SUMMARY|Test unit written'
done
