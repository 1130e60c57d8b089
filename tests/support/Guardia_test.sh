#!/usr/bin/env bash
# tests/support/Guardia_test.sh GUARDIA: a guarded test ends with its own status, sees a folder of its own, and leaves neither
# process nor folder, whether it ends by itself, is killed, or loses whoever started it.
set -euo pipefail
guardia=$1
aqui=$(mktemp -d)
trap 'rm -rf "$aqui"' EXIT
export TMPDIR=$aqui

espera() { # what is waited for comes, or the limit of all tests ends this one
    until "$@"; do sleep 0.02; done
}
listo() { compgen -G "$aqui/atipicos-prueba-*/listo" >/dev/null; }
vacia() { [ -z "$(ls -A "$aqui")" ]; }
muertos() { ! grep -qzF "MARCA=$$-marca" /proc/[0-9]*/environ 2>/dev/null; }
falla() {
    echo "$*" >&2
    exit 1
}

estado=0
"$guardia" sh -c 'exit 7' || estado=$?
[ "$estado" = 7 ] || falla "status: $estado, and it should be 7"
estado=0
"$guardia" "$aqui/no-hay" 2>/dev/null || estado=$?
[ "$estado" = 125 ] || falla "status of a command that is not there: $estado, and it should be 125"
[ "$("$guardia" sh -c 'echo "$TMPDIR"')" != "$aqui" ] || falla "the folder is not its own"
espera vacia

# A child, one that has left the group and the session, a deaf one, and a folder with something in it.
deja='trap "" TERM
    mkdir "$TMPDIR/d"
    touch "$TMPDIR/d/fichero"
    sleep 1000 &
    setsid sleep 1000 &
    setsid sh -c "trap \"\" TERM; while :; do sleep 1; done" &'

MARCA=$$-marca "$guardia" sh -c "$deja exit 0"
espera muertos
espera vacia

MARCA=$$-marca "$guardia" sh -c "$deja touch \"\$TMPDIR/listo\"; sleep 1000" &
espera listo
! muertos || falla "nothing was running"
kill -KILL $!
wait $! 2>/dev/null || true
espera muertos
espera vacia

# Whoever started it is killed.
sh -c "MARCA=$$-marca '$guardia' sh -c '$(printf %s "$deja" | sed "s/'/'\\\\''/g") touch \"\$TMPDIR/listo\"; sleep 1000'; true" &
espera listo
kill -KILL $!
wait $! 2>/dev/null || true
espera muertos
espera vacia
echo "nothing left after an end, a kill and the starter's kill"
