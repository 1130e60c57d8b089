#!/usr/bin/env bash
# Dependencies point down the floors of the house: each folder may include only those listed for it,
# and Qt stands in windows alone: forms (frmX is the form X, frmclsX its launcher), free functions over their widgets
# (XQt), what keeps the wait message, controls, the host's own windows and the command that prints.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# folder: folders that it may include
permitidas() {
    case "$1" in
        context/frmcls*) echo runtime platform context controls charges posting editor browser printing ;;
        context/frmMsg*) echo runtime platform context controls ;;
        posting/frm* | posting/*Qt.*) echo runtime platform context controls charges posting ;;
        editor/frm* | editor/*Qt.*) echo runtime platform context controls charges posting editor printing ;;
        browser/frm* | browser/*Qt.*) echo runtime platform context controls charges posting editor browser printing ;;
        printing/*) echo runtime platform context controls charges printing ;;
        automation/*) echo automation ;;
        server/*Qt.*) echo runtime platform automation context controls charges printing engines/ado server ;;
        server/*) echo runtime platform automation context charges engines/ado server ;;
        runtime/*) echo runtime ;;
        platform/*) echo runtime platform ;;
        controls/*) echo runtime platform context controls ;;
        context/*) echo runtime platform context ;;
        charges/*) echo runtime platform context charges ;;
        posting/*) echo runtime platform context charges posting ;;
        editor/*) echo runtime platform context charges posting editor ;;
        browser/*) echo runtime platform context charges browser ;;
        engines/ado/*) echo runtime platform automation engines/ado ;;
        engines/*) echo runtime platform engines ;;
        host/bases/*) echo runtime platform engines host/sql host/bases ;;
        host/bexmor/*) echo runtime platform host/sql host/bexmor ;;
        host/documento/*) echo runtime platform engines/sql host/sql host/bases host/documento ;; # the place says which template
        host/fichas/*) echo runtime platform context host/sql host/bases host/bexmor host/fichas ;;
        host/orvalin/*) echo runtime platform host/documento host/orvalin ;;
        host/sql/*) echo runtime host/sql ;;
        host/terminal/*) echo runtime platform host/terminal ;;
        host/sesion/*) echo runtime platform context host/bases host/orvalin host/bexmor host/terminal host/sesion ;;
        host/comprobacion/*)
            echo runtime platform context charges browser host/sql host/bases host/bexmor host/terminal host/sesion \
                host/comprobacion ;;
        host/reclamaciones/*)
            echo runtime platform context charges posting editor browser engines host/sql host/bases host/orvalin \
                host/bexmor host/terminal host/sesion host/comprobacion host/reclamaciones ;;
        host/panel/*)
            echo runtime platform host/sql host/bases host/comprobacion host/panel ;;
        host/resumen/*) echo runtime platform browser host/sql host/terminal host/resumen ;;
        host/graficos/*) echo runtime platform controls host/resumen host/graficos ;;
        host/ventanas/*)
            echo runtime platform context controls charges browser printing host/bases host/documento host/orvalin \
                host/terminal host/sesion host/comprobacion host/fichas host/panel host/resumen host/graficos host/ventanas ;;
        host/ordenes/*) echo runtime platform context controls charges posting editor browser printing engines host ;;
        *) echo "?" ;;
    esac
}

fallos=0
while IFS= read -r fichero; do
    lista=$(permitidas "$fichero")
    if [ "$lista" = "?" ]; then
        echo "$fichero: no floor is known for this folder"
        fallos=1
        continue
    fi
    while IFS=: read -r linea incluido; do
        bien=0
        [[ "$incluido" == ui_* ]] && bien=1 # what Qt makes of the form's own .ui
        for carpeta in $lista; do
            [[ "$incluido" == "$carpeta"/* ]] && bien=1
        done
        if [ $bien -eq 0 ]; then
            echo "$fichero:$linea: includes $incluido, which is not below it"
            fallos=1
        fi
    done < <(grep -nE '^#include "' "$fichero" | sed -E 's/^([0-9]+):#include "([^"]+)".*/\1:\2/')
    if [[ ! "$fichero" =~ (/frm[^/]*|/[^/]*Qt\.[ch]pp|^context/modMsgOp.cpp|^controls/.*|^host/graficos/.*|^host/ventanas/.*|^host/ordenes/Imprimir.cpp)$ ]] && grep -nE '^#include <Q' "$fichero"; then
        echo "$fichero: includes Qt"
        fallos=1
    fi
done < <(git ls-files --cached --others --exclude-standard '*.cpp' '*.hpp' | grep -vE '^(tests|bench|demo|docs)/')
exit $fallos
