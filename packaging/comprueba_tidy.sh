#!/usr/bin/env bash
# clang-tidy over the sources of the product, held at zero: packaging/comprueba_tidy.sh FOLDER_OF_A_BUILD
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
compilacion=$1

# Without the precompiled headers: each source is read with what it includes itself, which also shows what it forgot.
propia=$(mktemp -d)
trap 'rm -rf "$propia"' EXIT
sed -E "s#-Winvalid-pch -include [^ ]*/cmake_pch.hxx##" "$compilacion/compile_commands.json" >"$propia/compile_commands.json"

git ls-files '*.cpp' | grep -vE '^(tests|bench|demo|docs)/|/SinVentanas.cpp$' \
    | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p "$propia" --warnings-as-errors='*' \
        --extra-arg=-Wno-unknown-warning-option 2> >(grep -vE '^[0-9]+ warnings? (generated|treated)|^$' >&2 || true)
