#!/usr/bin/env python3
"""A new user in an empty folder, with keys alone: from nothing to the printed charge of a company of his own."""
import datetime
import subprocess
import sys

from escritorio import Escritorio, NoLlega

ESTE = datetime.date.today().year
CODIGO = f"AT{ESTE % 100:02}0001"
EMPRESA = ("Talleres Tegueste, S.L.", "B38999991", "Calle El Pico, 3", "38280", "Tegueste", "Tenerife", "Nave sur",
           "Ana Torres", "IGIC", "7")
PROVEEDOR = ("Aceros Punta Larga, S.A.", "A38999992", "Muelle, 8", "38530", "Candelaria")


def rellena(escritorio, *valores):
    """Types over box after box."""
    for valor in valores:
        escritorio.teclas("ctrl+a")
        escritorio.escribe(valor)
        escritorio.teclas("Return")


def crea_la_empresa(escritorio):
    """Nothing is there, so the program asks where; an own company is asked for its data."""
    escritorio.ventana("Elegir empresa")
    escritorio.foco("Carpeta, o dirección de un servidor:")
    escritorio.teclas("alt+p", "alt+c")
    escritorio.ventana("Datos de la empresa")
    escritorio.foco("Nombre:")
    rellena(escritorio, *EMPRESA)
    escritorio.foco("Nombre del proveedor:")
    rellena(escritorio, *PROVEEDOR)
    escritorio.teclas("alt+a")
    escritorio.ventana("Cargos atípicos a proveedores - Talleres Tegueste, S.L.")


def teclea_el_cargo(escritorio):
    """One line without an article."""
    escritorio.foco("Reclamaciones a Proveedores")
    escritorio.teclas("Return")
    escritorio.ventana("Reclamaciones a Proveedores")
    for nombre, texto in (("Almacén", ""), ("Proveedor", "1"), ("Fecha", ""), ("Observaciones del cargo", "Doblada"),
                          ("Franquiciado", ""), ("Artículo", ""), ("Descripción del artículo", "Chapa de 2 mm"),
                          ("Observaciones de la línea", ""), ("Unidades", "4"), ("Costo", "25,5"), ("Importe", "")):
        escritorio.foco(nombre)
        if texto:
            escritorio.escribe(texto)
        escritorio.teclas("Return")
    escritorio.filas("Líneas del cargo", 1)
    escritorio.teclas("alt+a")
    escritorio.ventana("Previsiones de Pago")
    escritorio.foco("Importe de la previsión")
    escritorio.teclas("F9")
    escritorio.ventana("¡ Atención !")
    escritorio.teclas("Return")


def imprime(escritorio, fichero):
    """To a PDF file, chosen and named by keys."""
    escritorio.ventana("Seleccione Destino")
    escritorio.teclas("shift+Tab", "shift+Tab")
    escritorio.escribe("F")
    escritorio.foco("Fichero PDF")
    escritorio.teclas("alt+a")
    escritorio.ventana("Guardar como PDF")
    escritorio.teclas("ctrl+a")
    escritorio.escribe(str(fichero))
    escritorio.teclas("Return")
    escritorio.ventana("Reclamaciones a Proveedores")
    escritorio.teclas("alt+s")
    escritorio.ventana("Cargos atípicos")


def exige(que, hay, debido):
    """What there is, and should be."""
    if hay != debido:
        raise NoLlega(f"{que}: {hay}, and it should be {debido}")
    print(f"{que}: {hay}")


def main():
    with Escritorio(sys.argv[1]) as escritorio:
        fichero = escritorio.carpeta / "cargo.pdf"
        escritorio.abre_de_nuevas()
        crea_la_empresa(escritorio)
        teclea_el_cargo(escritorio)
        imprime(escritorio, fichero)
        exige("charges", escritorio.consulta("SELECT Codigo, Proveedor, Importe, Impuesto_Importe, Asiento, Usuario "
                                             "FROM Proveedores_Cargos_Atipicos"), [f"{CODIGO}|1|102|7.14|1|1"])
        escritorio.espera("the printed charge", lambda: fichero.read_bytes().rstrip().endswith(b"%%EOF"))
        papel = subprocess.run(["pdftotext", "-layout", fichero, "-"], stdout=subprocess.PIPE, text=True, check=True).stdout
        for dicho in (EMPRESA[0], PROVEEDOR[0], PROVEEDOR[4], CODIGO, "Chapa de 2 mm", "109,14"):
            exige(f"«{dicho}» on paper", dicho in papel, True)
        # What it greets with now is the person's own work.
        escritorio.filas("Últimos cargos", 1)
        escritorio.teclas("alt+l", "Return")
        escritorio.ventana("Visor de Atípicos")
        escritorio.filas("Atípicos", 1)
        print(escritorio.ordena("verificar"))


if __name__ == "__main__":
    main()
