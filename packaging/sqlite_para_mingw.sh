#!/usr/bin/env bash
# SQLite in one source file, made from Debian's source package, for the build for Windows:
#     packaging/sqlite_para_mingw.sh FOLDER
# Afterwards the folder holds sqlite3.c and sqlite3.h. Quick when it already does. Needs tclsh.
set -euo pipefail
mkdir -p "$1"
carpeta=$(cd "$1" && pwd)
[ -s "$carpeta/sqlite3.c" ] && [ -s "$carpeta/sqlite3.h" ] && exit 0

trabajo=$(mktemp -d)
trap 'rm -rf "$trabajo"' EXIT
cd "$trabajo"
mkdir -p listas/partial
. /etc/os-release
echo "deb-src http://deb.debian.org/debian $VERSION_CODENAME main" >fuentes.list
fuentes=(-qq -o "Dir::Etc::sourcelist=$trabajo/fuentes.list" -o Dir::Etc::sourceparts=-
    -o "Dir::State::lists=$trabajo/listas" -o APT::Sandbox::User=root)
apt-get "${fuentes[@]}" update
apt-get "${fuentes[@]}" --download-only source sqlite3
mkdir fuente
tar xf sqlite3_*.orig.tar.xz --strip-components=1 -C fuente
cd fuente
if ! { ./configure --disable-readline --disable-tcl && make -s sqlite3.c; } >registro 2>&1; then
    tail registro >&2
    exit 1
fi
mv sqlite3.c sqlite3.h "$carpeta/"
