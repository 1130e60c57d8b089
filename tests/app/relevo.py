#!/usr/bin/env python3
"""The server that is written to dies twice under the windows: with a charge keyed in, which is then saved at its standby,
and with the browser open, in which the person gives up waiting and searches again later.
"""
import datetime
import sys

from editor import LINEAS, acepta, cabecera, despacha_avisos, linea
from escritorio import Escritorio, NoLlega, contenido
from reserva import ConReserva, programas

AVISO = "Conexión perdida"
LISTA = "Atípicos"
CARGOS = "SELECT COUNT(*) FROM orvalin.proveedores_cargos_atipicos WHERE observ = 'Roto y mojado'"


class EnServidor(Escritorio):
    """The program on a company of a server."""

    def __init__(self, programa, servidor):
        self.servidor = servidor
        super().__init__(programa)

    def donde(self):
        return ["--conexion", self.servidor.direccion()]

    def avisa(self):
        """Waits for the notice with for how long it has been tried, and reads it."""
        self.ventana(AVISO)
        self.espera("the time", lambda: any(uno.name.startswith("Se intenta desde hace ") for uno in self.activa()))
        dicho = [contenido(uno) or uno.name for uno in self.activa()]
        if not any("120 s como mucho; lo tecleado sigue en su ventana." in uno for uno in dicho):
            raise NoLlega(f"what is said: {dicho}")
        print(dicho)


def guarda_en_la_reserva(escritorio, servidor):
    """The charge is keyed in before the end, and accepted after it."""
    escritorio.foco("Reclamaciones a Proveedores")
    escritorio.teclas("Return")
    escritorio.ventana("Reclamaciones a Proveedores")
    cabecera(escritorio, "106", almacen="3", fecha=f"1702{datetime.date.today().year}", observaciones="Roto y mojado")
    linea(escritorio, "1003", "12,485", "9,75")
    escritorio.filas(LINEAS, 1)
    servidor.mata()
    escritorio.teclas("alt+a")
    escritorio.avisa()
    servidor.asciende()
    servidor.repone()
    escritorio.ventana("Previsiones de Pago")
    escritorio.foco("Importe de la previsión")
    escritorio.teclas("F9")
    despacha_avisos(escritorio)
    escritorio.teclas("alt+s")
    escritorio.ventana("Cargos atípicos")


def deja_de_esperar_en_el_visor(escritorio, servidor):
    """Escape ends the notice, the search says why there is none, and the next one finds the charge."""
    escritorio.teclas("ctrl+b")
    escritorio.ventana("Visor de Atípicos")
    escritorio.filas(LISTA, 1)
    servidor.mata()
    escritorio.clic(escritorio.objeto("Fecha final"))
    escritorio.teclas("Return")
    escritorio.avisa()
    escritorio.teclas("Escape")
    escritorio.ventana("frmCompras_Atipicos_Visor:")
    escritorio.teclas("Return")
    escritorio.ventana("Visor de Atípicos")
    servidor.asciende()
    escritorio.clic(escritorio.objeto("Fecha final"))
    escritorio.teclas("Return")
    escritorio.filas(LISTA, 1)
    escritorio.ventana("Visor de Atípicos")


def main():
    if programas() is None:
        print("skipped: no PostgreSQL server here")
        sys.exit(77)
    with ConReserva() as servidor, EnServidor(sys.argv[1], servidor) as escritorio:
        escritorio.ordena("crear")
        escritorio.abre("--empresa", "1", "--usuario", "2")
        escritorio.ventana("Cargos atípicos")
        guarda_en_la_reserva(escritorio, servidor)
        if servidor.consulta(CARGOS) != ["1"]:
            raise NoLlega(f"charges: {servidor.consulta(CARGOS)}")
        deja_de_esperar_en_el_visor(escritorio, servidor)
        print(escritorio.ordena("verificar"))


if __name__ == "__main__":
    main()
