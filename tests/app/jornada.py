#!/usr/bin/env python3
"""A clerk's day by real keys and clicks: five charges, of which one is changed, one deleted, and one left by Alt+F4 and
brought back.
After each step the company is compared with what it must then hold.
"""
import datetime
import sys

from editor import LINEAS, acepta, cabecera, campo, despacha_avisos, linea
from escritorio import Escritorio, NoLlega

ESTE = datetime.date.today().year
AT = f"AT{ESTE % 100:02}"

CARGOS = ("SELECT Codigo, Cod_Almacen, Proveedor, Importe, Impuesto_Importe, EmpContable, Asiento, Observ "
          "FROM Proveedores_Cargos_Atipicos ORDER BY Cod_Almacen, Codigo")
CARGADO = ("SELECT Cod_Almacen, Codigo, Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ "
           "FROM Proveedores_Cargos_Atipicos_Lineas ORDER BY Cod_Almacen, Codigo, Num_Linea")
ASIENTOS = ("SELECT Cod_Empresa, Asiento, COUNT(*), SUM(Debe), SUM(Haber) FROM Bexmor_Apuntes "
            "GROUP BY Cod_Empresa, Asiento ORDER BY Cod_Empresa, Asiento")
PREVISIONES = ("SELECT Cod_Empresa, Asiento, Importe, TipoDoc, Cuenta, Banco FROM Bexmor_Previsiones "
               "ORDER BY Cod_Empresa, Asiento, Numero")

# What each step leaves: of the charges the rows, in the order of their warehouses; of an entry lines, debit and credit,
# each of which is twice the total with tax.
PRIMERO = (f"{AT}0001|1|101|30|2.1|1|1|", [f"1|{AT}0001|1|1001|Agua mineral 1,5 l (caja de 6)|12|2.5|"])
SEGUNDO = (f"{AT}0001|3|103|17.1|1.2|2|1|Pale mojado",
           [f"3|{AT}0001|1|1003|Vino tinto joven 75 cl|3|4.5|rotas", f"3|{AT}0001|2|1012|Gofio de millo 1 kg|2.25|1.6|"])
TERCERO = (f"{AT}0001|2|104|80|5.6|1|2|Tres y uno menos",
           [f"2|{AT}0001|1|1005|Aceite de oliva 5 l|4|10|", f"2|{AT}0001|2|1006|Atún en aceite, lata de 900 g|2|20|"])
CUARTO = (f"{AT}0002|1|102|100|7|1|3|", [f"1|{AT}0002|1|1030|Ron añejo 70 cl|1|100|GOLPEADA EN EL MUELLE"])
CAMBIADO = (f"{AT}0001|2|104|91|6.37|1|4|Tres y uno menos",
            [f"2|{AT}0001|1|1005|Aceite de oliva 5 l|4|10|", f"2|{AT}0001|2|1006|Atún en aceite, lata de 900 g|2|25.5|"])
QUINTO = (f"{AT}0003|1|105|42|2.94|1|5|Se queda a medias", [f"1|{AT}0003|1|1008|Leche entera 1 l (caja de 12)|6|7|"])
ASIENTO = {
    "1|1": ("1|1|5|64.2|64.2", ["1|1|32.1|1|40000101|57200001"]),
    "1|2": ("1|2|6|171.2|171.2", ["1|2|28.53|3|40000104|57200001"] * 2 + ["1|2|28.54|3|40000104|57200001"]),
    "1|3": ("1|3|5|214|214", ["1|3|107|2|40000102|57200002"]),
    "1|4": ("1|4|6|194.74|194.74", ["1|4|32.46|3|40000104|57200001"] * 2 + ["1|4|32.45|3|40000104|57200001"]),
    "1|5": ("1|5|5|89.88|89.88", ["1|5|14.98|3|40000105|57200002"] * 3),
    "2|1": ("2|1|6|36.6|36.6", ["2|1|18.3|2|521000103|572000001"]),
}
LISTA = "Atípicos"
TECLAS_DE_UN_CARGO = 26  # of one line, from the main window to the accepted forecasts


def guarda_el_primero(escritorio):
    """One line, keys alone, counted."""
    escritorio.foco("Reclamaciones a Proveedores")
    escritorio.pulsadas = 0
    escritorio.teclas("Return")
    escritorio.ventana("Reclamaciones a Proveedores")
    cabecera(escritorio, "101")
    linea(escritorio, "1001", "12", "2,5")
    acepta(escritorio)
    print(f"key presses for a charge of one line: {escritorio.pulsadas}")
    if escritorio.pulsadas > TECLAS_DE_UN_CARGO:
        raise NoLlega(f"more than {TECLAS_DE_UN_CARGO} key presses")
    despacha_avisos(escritorio)


def guarda_el_segundo(escritorio):
    """Another warehouse and franchise, and a supplier found by his name."""
    campo(escritorio, "Almacén", "3")
    escritorio.foco("Proveedor")
    escritorio.escribe("n")  # a name where a code would begin
    escritorio.ventana("Buscar el proveedor")
    escritorio.foco("Buscar:")
    escritorio.escribe("andu")
    escritorio.espera("what was typed before the window was there", lambda: escritorio.objeto(
        "Buscar:", "text").queryText().getText(0, -1) == "nandu")
    escritorio.teclas("Return")
    escritorio.ventana("Reclamaciones a Proveedores")
    campo(escritorio, "Fecha", "")
    campo(escritorio, "Observaciones del cargo", "Pale mojado")
    escritorio.foco("Franquiciado")
    escritorio.teclas("space", "Return")
    linea(escritorio, "1003", "3", "4,5", "rotas")
    linea(escritorio, "1012", "2,25", "1,6")
    acepta(escritorio)
    despacha_avisos(escritorio)


def guarda_el_tercero(escritorio):
    """One line changed and another removed before it is accepted, chosen with the mouse."""
    cabecera(escritorio, "104", almacen="2", observaciones="Tres y uno menos")
    for articulo, unidades, costo in (("1005", "1", "10"), ("1006", "2", "20"), ("1007", "3", "30")):
        linea(escritorio, articulo, unidades, costo)
    escritorio.filas(LINEAS, 3)
    escritorio.clic(escritorio.celda(LINEAS, 1, 1))
    escritorio.clic(escritorio.objeto("Modificar"))
    linea(escritorio, "", "4", "")
    escritorio.clic(escritorio.celda(LINEAS, 3, 1))
    escritorio.clic(escritorio.objeto("Eliminar"))
    escritorio.ventana("¡ Atención !")
    escritorio.teclas("alt+s")
    escritorio.ventana("Reclamaciones a Proveedores")
    escritorio.filas(LINEAS, 2)
    acepta(escritorio)
    despacha_avisos(escritorio)


def guarda_el_cuarto(escritorio):
    """A long remark of its line, and one forecast settled by hand in the place of the one proposed."""
    cabecera(escritorio, "102", fecha=f"0302{ESTE}")
    linea(escritorio, "1030", "1", "100")
    escritorio.clic(escritorio.celda(LINEAS, 1, 1))
    escritorio.teclas("F4")
    escritorio.ventana("Editor de Comentarios")
    escritorio.escribe("golpeada en el muelle")
    escritorio.teclas("F9")
    escritorio.ventana("Reclamaciones a Proveedores")
    escritorio.teclas("alt+a")
    escritorio.ventana("Previsiones de Pago")
    escritorio.clic(escritorio.celda("Previsiones de pago", 1, 0))
    escritorio.teclas("Delete")
    campo(escritorio, "Importe de la previsión", "107")
    campo(escritorio, "Tipo de documento", "2")
    escritorio.foco("Cuenta del banco")
    escritorio.teclas("Return")
    campo(escritorio, "Vencimiento", f"1503{ESTE}")
    escritorio.filas("Previsiones de pago", 1)
    escritorio.foco("Importe de la previsión")
    escritorio.teclas("F9")
    despacha_avisos(escritorio)


def deja_el_quinto(escritorio):
    """Keyed in, and left by Alt+F4."""
    cabecera(escritorio, "105", observaciones="Se queda a medias")
    linea(escritorio, "1008", "6", "7")
    escritorio.filas(LINEAS, 1)
    escritorio.teclas("alt+F4")
    escritorio.ventana("Cargos atípicos")


def busca_los_cuatro(escritorio):
    """The browser, which opens with the charges of the year."""
    escritorio.teclas("ctrl+b")
    escritorio.ventana("Visor de Atípicos")
    escritorio.filas(LISTA, 4)


def elige(escritorio, codigo, almacen):
    """Clicks on a charge of the list."""
    def fila():
        tabla = escritorio.objeto(LISTA, "table").queryTable()
        return next((una + 1 for una in range(tabla.nRows)
                     if [tabla.getAccessibleAt(una, 0).name, tabla.getAccessibleAt(una, 1).name] == [codigo, almacen]), 0)

    escritorio.clic(escritorio.celda(LISTA, escritorio.espera(f"{codigo} of warehouse {almacen}", fila), 0))


def cambia_uno(escritorio):
    """From the browser to the editor: another price, accepted, and back."""
    elige(escritorio, f"{AT}0001", "2")
    escritorio.clic(escritorio.objeto("Modificar"))
    escritorio.ventana("¡ Atención !")
    escritorio.teclas("alt+s")
    escritorio.ventana(f"Reclamaciones a Proveedores - {AT}0001")
    escritorio.filas(LINEAS, 2)
    escritorio.clic(escritorio.celda(LINEAS, 2, 1))
    escritorio.clic(escritorio.objeto("Modificar"))
    linea(escritorio, "", "", "25,5")
    acepta(escritorio)
    despacha_avisos(escritorio)
    escritorio.clic(escritorio.objeto("Salir"))
    escritorio.ventana("Visor de Atípicos")


def elimina_uno(escritorio):
    """The first charge of the head office goes; its entry stays."""
    elige(escritorio, f"{AT}0001", "1")
    escritorio.teclas("alt+e")
    escritorio.ventana("¡ Atención !")
    escritorio.teclas("alt+s")
    escritorio.ventana("Visor de Atípicos")
    escritorio.filas(LISTA, 3)


def recupera_el_quinto(escritorio):
    """What Alt+F4 left is offered, and brought back as it was."""
    escritorio.teclas("alt+s")
    escritorio.ventana("Cargos atípicos")
    escritorio.teclas("alt+e")
    escritorio.ventana("Reclamaciones a Proveedores")
    escritorio.filas(LINEAS, 1)
    acepta(escritorio)
    despacha_avisos(escritorio)


def exige(escritorio, paso, cargos, asientos):
    """The company holds these charges and these entries, and nothing else."""
    debidas = {
        CARGOS: [cargo for cargo, _ in cargos], CARGADO: [linea for _, lineas in cargos for linea in lineas],
        ASIENTOS: [ASIENTO[cual][0] for cual in asientos],
        PREVISIONES: [prevision for cual in asientos for prevision in ASIENTO[cual][1]],
    }
    for consulta, debido in debidas.items():
        hay = escritorio.consulta(consulta)
        if hay != debido:
            raise NoLlega(f"after {paso} there is\n{hay}\nand should be\n{debido}")
    print(f"{paso}: {len(cargos)} charges, {len(asientos)} entries")


def main():
    with Escritorio(sys.argv[1]) as escritorio:
        escritorio.ordena("crear")
        escritorio.abre("--empresa", "1", "--usuario", "1")
        escritorio.ventana("Cargos atípicos")
        tras_el_cuarto = ([PRIMERO, CUARTO, TERCERO, SEGUNDO], ["1|1", "1|2", "1|3", "2|1"])
        for paso, cargos, asientos in (
                (guarda_el_primero, [PRIMERO], ["1|1"]),
                (guarda_el_segundo, [PRIMERO, SEGUNDO], ["1|1", "2|1"]),
                (guarda_el_tercero, [PRIMERO, TERCERO, SEGUNDO], ["1|1", "1|2", "2|1"]),
                (guarda_el_cuarto, *tras_el_cuarto),
                (deja_el_quinto, *tras_el_cuarto),
                (busca_los_cuatro, *tras_el_cuarto),
                (cambia_uno, [PRIMERO, CUARTO, CAMBIADO, SEGUNDO], ["1|1", "1|2", "1|3", "1|4", "2|1"]),
                (elimina_uno, [CUARTO, CAMBIADO, SEGUNDO], ["1|1", "1|2", "1|3", "1|4", "2|1"]),
                (recupera_el_quinto, [CUARTO, QUINTO, CAMBIADO, SEGUNDO], ["1|1", "1|2", "1|3", "1|4", "1|5", "2|1"])):
            paso(escritorio)
            exige(escritorio, paso.__name__, cargos, asientos)
        print(escritorio.ordena("verificar"))


if __name__ == "__main__":
    main()
