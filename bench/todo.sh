#!/usr/bin/env bash
# Runs every benchmark on an optimised build and writes their figures, with machine and date, into
# docs/rendimiento.md: bench/todo.sh [FILE [PROGRAM…]]. Takes some ten minutes on two idle cores; on a busy machine
# the ratios still hold, because all sides of each are measured in turns, but the times do not. Where one workstation
# and its PostgreSQL server are to share a core the programs see to it themselves, and say so.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
destino=$(realpath "${1:-docs/rendimiento.md}")
shift || true
programas=("$@")
[ ${#programas[@]} -gt 0 ] || programas=(bench_guardar bench_operaciones bench_listar bench_servidor bench_oficinas bench_relevo bench_panel
    bench_ventana bench_visor bench_imprimir bench_registrar bench_resumen bench_despacho bench_forma)

packaging/dependencias.sh ventanas pruebas
cmake --preset release -B build/bench >/dev/null
ninja -C build/bench --quiet "${programas[@]}"

informe=$(mktemp)
trap 'rm -f "$informe"' EXIT
trap 'tail -3 "$informe" >&2' ERR
cd build/bench/bench
{
    echo "# Rendimiento"
    echo
    echo "Written by \`bench/todo.sh\`. Each figure of the component stands beside its floors: the same statements through"
    echo "the bare client library, in the same run and in turns, with median, minimum and maximum. The literal floor sends"
    echo "each text as it comes, in two sessions and with two commits; the prepared floor prepares each shape once and has"
    echo "one session and one commit. The databases of the floors keep the trail of charges and hold to rights by the same"
    echo "triggers as the component's. Where one workstation and its PostgreSQL server share a core it says so."
    echo
    echo "- Date: $(date '+%d/%m/%Y %H:%M'), commit $(git rev-parse --short HEAD)"
    echo "- Machine: $(nproc) × $(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1)," \
        "$(awk '/MemTotal/ { printf "%.0f GB", $2 / 1048576 }' /proc/meminfo), load before the run $(cut -d' ' -f1 /proc/loadavg)"
    echo "- $(. /etc/os-release && echo "$PRETTY_NAME"), $(c++ --version | head -1)," \
        "SQLite $(sqlite3 --version | cut -d' ' -f1), $(psql --version)"
    for programa in "${programas[@]}"; do
        echo
        echo "## $programa"
        echo
        sed -n '1,/^[^/]/{s#^// \{0,1\}##p}' "../../../bench/$programa.cpp"
        echo
        echo '```'
        QT_QPA_PLATFORM=offscreen "./$programa" 2>&1 | grep -vE 'This plugin does not support|^QStandardPaths'
        echo '```'
    done
} >"$informe"
cp "$informe" "$destino"
echo "$destino"
