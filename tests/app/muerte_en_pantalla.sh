#!/usr/bin/env bash
# tests/app/muerte_en_pantalla.sh PROGRAM: a charge is keyed in with real X keys and the program killed with it, twice;
# the main window offers it, and recovered and saved it is stored as one that nobody killed.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/pantalla_comun.sh"

abre() {
    "$programa" --datos "$1" --empresa 1 --usuario 2 2>/dev/null &
    proceso=$!
    ventana "^Cargos atípicos"
}
# Warehouse, supplier, day, remarks and franchise; two lines, one of them changed after it had been accepted.
teclea_cargo() {
    teclas Return
    ventana "^Reclamaciones a Proveedores"
    escribe 3
    teclas Return
    escribe 106
    teclas Return
    escribe 09102026
    teclas Return
    escribe "Roto y mojado"
    teclas Return space Return
    escribe 1003
    teclas Return Return
    escribe "caja 4"
    teclas Return
    escribe 12,485
    teclas Return
    escribe 9,75
    teclas Return Return
    teclas Return
    escribe Porte
    teclas Return Return
    escribe -1
    teclas Return
    escribe 14,5
    teclas Return Return
}
borradores() { find "$carpeta/estado/atipicos/borradores" -name '*.json' 2>/dev/null; }
hay_uno() { [ "$(borradores | wc -l)" = 1 ]; }
recupera() {
    ventana "^Cargos atípicos"
    teclas alt+e
    ventana "^Reclamaciones a Proveedores"
}
guarda() {
    teclas alt+a
    acepta_previsiones
}
muere() {
    kill -KILL "$proceso"
    wait "$proceso" 2>/dev/null || true
}
# Everything that a save writes, but for the time of day.
guardado() {
    sqlite3 "$1/empresa.db" \
        "SELECT Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Observ,
                Impuesto, Usuario FROM Proveedores_Cargos_Atipicos;
         SELECT * FROM Proveedores_Cargos_Atipicos_Lineas;
         SELECT Cuenta, Concepto, Debe, Haber FROM Bexmor_Apuntes;
         SELECT Importe, Vencimiento, Cuenta FROM Bexmor_Previsiones"
}

for cual in entero muerto; do
    "$programa" crear --datos "$carpeta/$cual" >/dev/null
done

# Without a kill: what is to be stored.
abre "$carpeta/entero"
teclea_cargo
espera "the draft" hay_uno
exige "mode of the draft" 600 "$(stat -c %a "$(borradores)")"
guarda
ventana "^Reclamaciones a Proveedores"
exige "drafts of what is saved" "" "$(borradores)"
muere
debido=$(guardado "$carpeta/entero")

# Killed while it is keyed in, and again when it has been recovered.
abre "$carpeta/muerto"
teclea_cargo
muere
abre "$carpeta/muerto"
recupera
espera "one draft, that of the window" hay_uno
muere
espera "the draft of the killed window" hay_uno
exige "stored by the killed processes" 0 \
    "$(sqlite3 "$carpeta/muerto/empresa.db" "SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos")"
abre "$carpeta/muerto"
recupera
guarda
ventana "^Reclamaciones a Proveedores"
exige "drafts left" "" "$(borradores)"
exige "the charge, its lines, entry and forecasts" "$debido" "$(guardado "$carpeta/muerto")"
"$programa" verificar --datos "$carpeta/muerto"
