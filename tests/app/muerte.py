#!/usr/bin/env python3
"""A charge is keyed in and the program killed with it, twice. The main window offers it, and recovered and saved it is
stored as one that nobody killed.
"""
import datetime
import sys

from editor import LINEAS, acepta, cabecera, despacha_avisos, linea
from escritorio import Escritorio, NoLlega

# Everything that a save writes, but for the time of day.
GUARDADO = (
    "SELECT Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Observ, "
    "Impuesto, Usuario FROM Proveedores_Cargos_Atipicos",
    "SELECT * FROM Proveedores_Cargos_Atipicos_Lineas",
    "SELECT Cuenta, Concepto, Debe, Haber FROM Bexmor_Apuntes",
    "SELECT Importe, Vencimiento, Cuenta FROM Bexmor_Previsiones",
)
DIA = f"1702{datetime.date.today().year}"


def exige(que, hay, debido):
    """Ends the script when something is not what it should be."""
    if hay != debido:
        raise NoLlega(f"{que}: {hay}\nand should be\n{debido}")
    print(f"{que}: {hay}")


def guardado(escritorio):
    """What the company holds of charges and their entries."""
    return [escritorio.consulta(consulta) for consulta in GUARDADO]


def borradores(escritorio):
    """The drafts that are kept, as files."""
    return sorted((escritorio.carpeta / "atipicos/borradores").rglob("*.json"))


def el_borrador(escritorio):
    """Waits until there is one, and no other; its file."""
    def uno():
        hay = borradores(escritorio)
        return hay[0] if len(hay) == 1 else None

    return escritorio.espera("one draft", uno)


def abre(escritorio, empresa):
    """Starts the program on one of the two companies."""
    escritorio.datos = escritorio.carpeta / empresa
    escritorio.abre("--empresa", "1", "--usuario", "2")
    escritorio.ventana("Cargos atípicos")


def muere(escritorio):
    """As by a power cut: nothing of the program runs any more."""
    escritorio.proceso.kill()
    escritorio.proceso.wait()


def teclea(escritorio):
    """Warehouse, supplier, day, remarks and franchise; two lines."""
    escritorio.foco("Reclamaciones a Proveedores")
    escritorio.teclas("Return")
    escritorio.ventana("Reclamaciones a Proveedores")
    cabecera(escritorio, "106", almacen="3", fecha=DIA, observaciones="Roto y mojado", franquiciado=True)
    linea(escritorio, "1003", "12,485", "9,75", observaciones="caja 4")
    linea(escritorio, "", "-1", "14,5", descripcion="Porte")
    escritorio.filas(LINEAS, 2)


def recupera(escritorio):
    """Takes up the draft that the main window offers."""
    escritorio.teclas("alt+e")
    escritorio.ventana("Reclamaciones a Proveedores")
    escritorio.filas(LINEAS, 2)


def guarda(escritorio):
    """Accepts charge and forecasts."""
    acepta(escritorio)
    despacha_avisos(escritorio)


def main():
    with Escritorio(sys.argv[1]) as escritorio:
        for empresa in ("entero", "muerto"):
            escritorio.datos = escritorio.carpeta / empresa
            escritorio.ordena("crear")

        # Without a kill: what is to be stored.
        abre(escritorio, "entero")
        teclea(escritorio)
        exige("mode of the draft", oct(el_borrador(escritorio).stat().st_mode & 0o777), oct(0o600))
        guarda(escritorio)
        exige("drafts of what is saved", borradores(escritorio), [])
        muere(escritorio)
        debido = guardado(escritorio)

        # Killed while it is keyed in, and again when it has been recovered.
        abre(escritorio, "muerto")
        teclea(escritorio)
        muere(escritorio)
        abre(escritorio, "muerto")
        recupera(escritorio)
        el_borrador(escritorio)
        muere(escritorio)
        exige("drafts of the killed windows", len(borradores(escritorio)), 1)
        exige("stored by them", guardado(escritorio), [[], [], [], []])
        abre(escritorio, "muerto")
        recupera(escritorio)
        guarda(escritorio)
        exige("drafts left", borradores(escritorio), [])
        exige("the charge, its lines, entry and forecasts", guardado(escritorio), debido)
        print(escritorio.ordena("verificar"))


if __name__ == "__main__":
    main()
