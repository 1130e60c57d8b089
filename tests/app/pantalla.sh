#!/usr/bin/env bash
# tests/app/pantalla.sh PROGRAM: with real X keys, a charge is typed into the started program, found in its browser,
# changed and deleted, and the databases are compared after each step. Ends with 77 (skipped) where Xvfb, xdotool or sqlite3 is not installed.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/pantalla_comun.sh"

"$programa" crear --datos "$carpeta/datos" >/dev/null
"$programa" --datos "$carpeta/datos" --empresa 1 --usuario 1 2>/dev/null &

en_orvalin() { sqlite3 "$carpeta/datos/empresa.db" "$1"; }
cargos="SELECT Codigo, Proveedor, Importe, Asiento FROM Proveedores_Cargos_Atipicos"
lineas="SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos_Lineas"
asientos="SELECT COUNT(*) FROM Bexmor_Asientos"

# A new charge in the editor.
ventana "^Cargos atípicos"
teclas Return
ventana "^Reclamaciones a Proveedores"
teclas Return
escribe 104
teclas Return Return Return Return
escribe 1006
teclas Return Return Return
escribe 12
teclas Return
escribe 5,6325
teclas Return Return
teclas alt+a
acepta_previsiones
codigo=$(en_orvalin "SELECT Codigo FROM Proveedores_Cargos_Atipicos")
exige "recorded" "$codigo|104|67.59|1" "$(en_orvalin "$cargos")"
ventana "^Reclamaciones a Proveedores"
sale

# The browser: search, lines, the next one (there is none), change it, delete it.
ventana "^Cargos atípicos"
teclas ctrl+b
ventana "^Visor de Atípicos"
teclas Return Return
sleep 0.5
teclas Return
sleep 0.3
teclas Escape
teclas Down
teclas alt+m
ventana "Atención"
teclas alt+s
ventana "^Reclamaciones a Proveedores - $codigo"
escribe 103
teclas Return
sleep 0.3
teclas alt+a
acepta_previsiones
exige "changed" "$codigo|103|67.59|2" "$(en_orvalin "$cargos")"
exige "lines" 1 "$(en_orvalin "$lineas")"
ventana "^Reclamaciones a Proveedores"
sale
ventana "^Visor de Atípicos"
teclas alt+e
ventana "Atención"
teclas alt+s
sleep 1
exige "deleted" "0" "$(en_orvalin "SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos")"
exige "lines deleted" "0" "$(en_orvalin "$lineas")"
exige "entries that stay in the accounting" "2" "$(sqlite3 "$carpeta/datos/empresa.db" "$asientos")"
"$programa" verificar --datos "$carpeta/datos"
