#!/usr/bin/env bash
# clang-tidy over the sources of the product, held at zero: packaging/comprueba_tidy.sh FOLDER_OF_A_BUILD
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
git ls-files '*.cpp' | grep -vE '^(tests|bench|demo)/' \
    | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p "$1" --warnings-as-errors='*' \
        --extra-arg=-Wno-unknown-warning-option 2> >(grep -vE '^[0-9]+ warnings? (generated|treated)|^$' >&2 || true)
