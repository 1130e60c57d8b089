#!/usr/bin/env bash
# Makes the Debian package of a build, installs it into a root of the test's own, runs what it brought, and removes it:
#     Paquete_test.sh BUILD
set -euo pipefail
compilacion=$1
for orden in dpkg-deb dpkg-shlibdeps; do
    command -v $orden >/dev/null || { echo "Omitida: falta $orden (apt-get install dpkg-dev)."; exit 77; }
done
carpeta=$(mktemp -d)
trap 'rm -rf "$carpeta"' EXIT
raiz=$carpeta/raiz

(cd "$carpeta" && cpack --config "$compilacion/CPackConfig.cmake" -B "$carpeta/cpack" >registro 2>&1) || { cat "$carpeta/registro"; exit 1; }
paquete=$(ls "$carpeta"/cpack/*.deb)
dpkg-deb -c "$paquete" | awk '$1 !~ /^d/ { print $3, $6, $7, $8 }'

# lintian knows what a distribution refuses; what it only remarks on is not asked.
if command -v lintian >/dev/null; then
    dicho=$(TMPDIR=$carpeta lintian --allow-root --fail-on none --tag-display-limit 0 "$paquete" 2>&1) \
        || { echo "$dicho" >&2; exit 1; }
    errores=$(grep '^E:' <<<"$dicho" || true)
    [ -z "$errores" ] || { echo "$errores" >&2; exit 1; }
    echo "lintian: ningún error"
else
    echo "Omitido: falta lintian (apt-get install lintian)."
fi

mkdir -p "$raiz/var/lib/dpkg/info" "$raiz/var/lib/dpkg/updates"
cp /var/lib/dpkg/status "$raiz/var/lib/dpkg/" # what is installed here is what it may depend on
if [ "$(id -u)" -eq 0 ]; then
    dpkg --root="$raiz" --force-script-chrootless --log=/dev/null -i "$paquete" 2>/dev/null | tail -1
else
    dpkg-deb -x "$paquete" "$raiz"
fi

atipicos=$raiz/usr/bin/atipicos
"$atipicos" --help | sed -n 1p
cp -r "$raiz/usr/share/QVORComprasAtip/muestra" "$carpeta/datos"
"$atipicos" registrar --datos "$carpeta/datos" "$carpeta/datos/reclamaciones.csv" | tail -1
"$atipicos" verificar --datos "$carpeta/datos"
bash -c ". '$raiz/usr/share/bash-completion/completions/atipicos'
    COMP_WORDS=(atipicos regi) COMP_CWORD=1; _atipicos; [ \"\${COMPREPLY[*]}\" = registrar ]"
for fichero in "$raiz/usr/share/applications/atipicos.desktop" "$raiz"/usr/share/metainfo/*.metainfo.xml; do
    [ -s "$fichero" ] || { echo "falta $fichero" >&2; exit 1; }
done
if command -v desktop-file-validate >/dev/null; then
    dicho=$(desktop-file-validate "$raiz/usr/share/applications/atipicos.desktop" 2>&1)
    [ -z "$dicho" ] || { echo "$dicho" >&2; exit 1; }
    echo "entrada de escritorio: válida"
else
    echo "Omitido: falta desktop-file-validate (apt-get install desktop-file-utils)."
fi
if command -v appstreamcli >/dev/null; then
    dicho=$(appstreamcli validate --no-net --pedantic "$raiz"/usr/share/metainfo/*.metainfo.xml) \
        || { echo "$dicho" >&2; exit 1; }
    echo "metadatos AppStream: válidos"
else
    echo "Omitido: falta appstreamcli (apt-get install appstream)."
fi
# What the entry starts, as a desktop does: with the person's own folder, whatever its name.
casa="$carpeta/la casa de \"Ana\" \$1"
mkdir -p "$casa"
HOME=$casa PATH="$carpeta/falso:$PATH" python3 - "$raiz/usr/share/applications/atipicos.desktop" "$carpeta/falso" <<'FIN'
import os, re, subprocess, sys
os.mkdir(sys.argv[2])
falso = os.path.join(sys.argv[2], "atipicos")
with open(falso, "w") as orden:
    orden.write('#!/bin/sh\nprintf "%s\\n" "$@"\n')
os.chmod(falso, 0o755)
linea = next(l for l in open(sys.argv[1], encoding="utf-8") if l.startswith("Exec="))[5:].rstrip("\n")
linea = re.sub(r"\\(.)", lambda m: {"s": " ", "n": "\n", "t": "\t"}.get(m[1], m[1]), linea) # of any value
palabras = [re.sub(r"\\(.)", r"\1", m[1]) if m[1] is not None else m[2]
            for m in re.finditer(r'"((?:[^"\\]|\\.)*)"|([^\s"]+)', linea)] # of this one
dicho = subprocess.run(palabras, capture_output=True, text=True, check=True).stdout
if dicho != "--datos\n" + os.environ["HOME"] + "/atipicos\n":
    sys.exit("la entrada de escritorio ejecuta: " + repr(dicho))
FIN
version=$("$atipicos" --version | cut -d' ' -f2)
grep -q "<release version=\"$version\"" "$raiz"/usr/share/metainfo/*.metainfo.xml
zcat "$raiz/usr/share/doc/atipicos/changelog.gz" | sed -n 1p | grep -q "^atipicos ($version) "
for guion in permisos_postgresql.sql permisos_sqlserver.sql; do
    grep -q atipicos_puesto "$raiz/usr/share/QVORComprasAtip/permisos/$guion"
done

# Hardened as the distribution's own. What needs an optimised build is asked of one, and checked functions of the
# program: the component calls none of those that there are such of.
endurecido() {
    readelf -W -d -l "$1" >"$carpeta/elf"
    readelf -W --dyn-syms "$1" >"$carpeta/simbolos"
    grep -q 'BIND_NOW\|Flags: NOW' "$carpeta/elf" || { echo "$1: sin BIND_NOW" >&2; return 1; }
    grep -q GNU_RELRO "$carpeta/elf" || { echo "$1: sin RELRO" >&2; return 1; }
    grep -q 'GNU_STACK.* RW ' "$carpeta/elf" || { echo "$1: con la pila ejecutable" >&2; return 1; }
    grep -q 'Type: *DYN' <<<"$(readelf -h "$1")" || { echo "$1: no es independiente de su posición" >&2; return 1; }
    grep -qx 'CMAKE_BUILD_TYPE:STRING=Debug' "$compilacion/CMakeCache.txt" && return 0
    grep -q '__stack_chk_fail' "$carpeta/simbolos" || { echo "$1: sin protector de la pila" >&2; return 1; }
    [ -z "${2-}" ] || grep -q "$2" "$carpeta/simbolos" || { echo "$1: sin funciones comprobadas" >&2; return 1; }
}
endurecido "$atipicos" '__[a-z]*_chk@'
endurecido "$(find "$raiz/usr/lib" -name 'libQVORComprasAtip.so.*.*')"
echo "binarios endurecidos"
[ -n "$(find "$raiz/usr/lib" -name 'libQVORComprasAtip.so.*')" ]
[ -s "$raiz/usr/share/icons/hicolor/scalable/apps/atipicos.svg" ]
pagina=$(zcat "$raiz"/usr/share/man/man1/atipicos.1.gz | sed 's/\\-/-/g')
# The manual: every page that the program shows, with its pictures, where the man page and the program say that it is.
manual=$raiz/usr/share/doc/atipicos/manual
if grep -qx 'ATIPICOS_GUI:BOOL=ON' "$compilacion/CMakeCache.txt"; then
    for fuente in "$(dirname "$0")"/../../docs/manual/*.md; do
        [ -s "$manual/$(basename "$fuente" .md).html" ] || { echo "falta en el manual $(basename "$fuente")" >&2; exit 1; }
    done
    diff -rq "$(dirname "$0")/../../docs/manual/imagenes" "$manual/imagenes"
    grep -qF "${manual#"$raiz"}/indice.html" <<<"$pagina"
fi
[ -s "$raiz/usr/share/QVORComprasAtip/plantilla/documento_cargo.json" ]

# Every command and option that the help tells is on the man page and is completed, and nothing else is completed.
declaradas() { sed -nE "s/^  (.*,)?($1)( .*)?\$/\2/p"; }
completadas() {
    bash -c ". '$raiz/usr/share/bash-completion/completions/atipicos'
        COMP_WORDS=(atipicos $1 '$2') COMP_CWORD=\$((\${#COMP_WORDS[@]} - 1)); _atipicos; printf '%s\n' \"\${COMPREPLY[@]}\""
}
ordenes=$("$atipicos" --help | sed '1,/^Órdenes:/d' | declaradas '[a-z]+')
[ "$(wc -w <<<"$ordenes")" -ge 8 ]
for orden in '' $ordenes; do
    opciones=$("$atipicos" $orden --help | declaradas '--[a-z-]+')
    for palabra in $(completadas "$orden" --); do
        grep -qxF -e "$palabra" <<<"$opciones" || { echo "se completa y no se admite: $orden $palabra" >&2; exit 1; }
    done
    for palabra in $orden $opciones; do
        grep -qF -e "$palabra" <<<"$pagina" || { echo "no está en la página: $orden $palabra" >&2; exit 1; }
        [ "$palabra" = "$orden" ] || grep -qxF -e "$palabra" <<<"$(completadas "$orden" --)" \
            || { echo "no se completa: $orden $palabra" >&2; exit 1; }
    done
done

if [ "$(id -u)" -eq 0 ]; then
    dpkg --root="$raiz" --force-script-chrootless --log=/dev/null --purge atipicos >/dev/null 2>&1
    queda=$(find "$raiz/usr" -type f -o -type l 2>/dev/null || true)
    [ -z "$queda" ] || { echo "queda: $queda" >&2; exit 1; }
    echo "quitado: no queda nada"
fi
