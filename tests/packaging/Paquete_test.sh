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
grep -q '^Exec=.*atipicos' "$raiz/usr/share/applications/atipicos.desktop"
[ -n "$(find "$raiz/usr/lib" -name 'libQVORComprasAtip.so.*')" ]
[ -s "$raiz/usr/share/icons/hicolor/scalable/apps/atipicos.svg" ]
pagina=$(sed 's/\\-/-/g' "$raiz"/usr/share/man/man1/atipicos.1)

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
