#!/usr/bin/env bash
# clang-tidy over the sources of the product, held at zero: packaging/comprueba_tidy.sh FOLDER_OF_A_BUILD
# It reads them as that build compiles them, several together: .clang-tidy says whose findings are shown.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
compilacion=$(realpath "$1")

# Without the precompiled headers: each source is read with what it includes itself, which also shows what it forgot.
propia=$(mktemp -d)
trap 'rm -rf "$propia"' EXIT
sed -E "s#-Winvalid-pch -include [^ ]*/cmake_pch.hxx##" "$compilacion/compile_commands.json" >"$propia/compile_commands.json"

grep -oP '"file": "\K[^"]+' "$propia/compile_commands.json" | sort -u \
    | grep -vE "/(tests|bench|demo|docs)/|/SinVentanas.cpp$|_autogen/|/cmake_pch|/sqlite3.c$" \
    | xargs -P "$(nproc)" -n 2 clang-tidy --quiet -p "$propia" --warnings-as-errors='*' \
        --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-unused-command-line-argument 2> >(grep -vE '^[0-9]+ warnings? (generated|treated)|^$' >&2 || true)
