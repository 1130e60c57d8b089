#!/usr/bin/env bash
# The source package of the commit that is checked out: packaging/fuente.sh [FOLDER]
# Leaves atipicos-VERSION.tar.xz in the folder (here, if none is given) and prints its digest. The same commit gives the
# same bytes, wherever and whenever it is packed.
set -euo pipefail
destino=$(realpath "${1:-.}")
cd "$(dirname "${BASH_SOURCE[0]}")/.."
trabajo=$(mktemp -d)
trap 'rm -rf "$trabajo"' EXIT

# What is committed and nothing else, as old as the commit, with the same permissions whatever the mask.
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH
umask 022
mkdir "$trabajo/fuente"
git archive HEAD | tar x -C "$trabajo/fuente"
find "$trabajo/fuente" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +

cmake -S "$trabajo/fuente" -B "$trabajo/build" -DATIPICOS_GUI=OFF -DATIPICOS_PRUEBAS=OFF >/dev/null
cd "$trabajo"
cpack --config build/CPackSourceConfig.cmake -D CPACK_INSTALL_COMMANDS= -D CPACK_PACKAGING_INSTALL_PREFIX= >/dev/null
sha256sum atipicos-*.tar.xz
mv atipicos-*.tar.xz "$destino/"
