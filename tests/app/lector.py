#!/usr/bin/env python3
"""Reads every window as a screen reader does: what can have the focus says what it is, grids are read with their
headings, and what changes beside a field or in a line of state is told.
"""
import datetime
import sys

import pyatspi
from gi.repository import GLib

from escritorio import Escritorio, NoLlega, dentro, tiene

LINEAS = "Líneas del cargo"


class Lector:
    """What has been told since the last question, and what is wrong with the windows read so far."""

    def __init__(self, escritorio):
        self.escritorio = escritorio
        self.faltas = []
        self.dichos = []
        pyatspi.Registry.registerEventListener(
            self._oye, "object:property-change:accessible-name", "object:property-change:accessible-description")

    def _oye(self, suceso):
        cambiado = suceso.source.description if suceso.type.minor == "accessible-description" else suceso.source.name
        self.dichos.append(cambiado)

    def _dicho(self, texto):
        while GLib.MainContext.default().iteration(False):
            pass
        return any(texto in dicho for dicho in self.dichos)

    def oye(self, texto, accion):
        """Does something, and waits until a text is told because of it."""
        self._dicho("")
        self.dichos.clear()
        accion()
        try:
            self.escritorio.espera(f"«{texto}» told", lambda: self._dicho(texto))
        except NoLlega:
            self.faltas.append(f"«{texto}» is not told; what is: {self.dichos}")

    def lee(self, titulo, *debidos):
        """Reads the window of that title. `debidos`: "role «name»" of what must be able to have the focus in it."""
        ventana = self.escritorio.ventana(titulo)

        def faltan():
            hay = [rotulo(uno) for uno in dentro(ventana) if tiene(uno, pyatspi.STATE_FOCUSABLE)]
            return [debido for debido in debidos if debido not in hay]

        try:
            self.escritorio.espera(f"all of «{titulo}»", lambda: not faltan())
        except NoLlega:
            self.faltas += [f"{titulo}: there is no {debido}" for debido in faltan()]
        leidos = [uno for uno in dentro(ventana) if tiene(uno, pyatspi.STATE_FOCUSABLE)]
        print(f"{titulo}: " + ", ".join(rotulo(uno) for uno in leidos))
        for uno in leidos:
            self._nombre(titulo, uno)
        self._papeles(titulo, ventana)
        rotulos = [rotulo(uno) for uno in leidos]
        self.faltas += [f"{titulo}: two of {uno}" for uno in sorted({uno for uno in rotulos if rotulos.count(uno) > 1})]
        for tabla in [uno for uno in dentro(ventana) if uno.getRole() == pyatspi.ROLE_TABLE]:
            self._rejilla(titulo, tabla)

    def _nombre(self, titulo, objeto):
        nombre = objeto.name
        if objeto.getRole() == pyatspi.ROLE_NOTIFICATION and not nombre:  # there is nothing to say
            return
        if any(hijo.getRole() == pyatspi.ROLE_PAGE_TAB_LIST for hijo in objeto):  # which has the focus in its place
            return
        if objeto.getRole() == pyatspi.ROLE_COMBO_BOX and not etiquetas(objeto):  # its name is what is chosen in it
            self.faltas.append(f"{titulo}: the combo box «{nombre}» has no label")
        if not any(letra.isalpha() for letra in nombre):
            self.faltas.append(f"{titulo}: {objeto.getRoleName()} without a name, «{nombre}», {objeto.description}")
        de_leer = (nombre.startswith("Nombre d") or nombre.endswith("del atípico")) and not nombre.endswith(":")
        if objeto.getRole() == pyatspi.ROLE_TEXT and de_leer and not tiene(objeto, pyatspi.STATE_READ_ONLY):
            self.faltas.append(f"{titulo}: «{nombre}» says that it can be changed")
        if "de el " in nombre or "&" in nombre:
            self.faltas.append(f"{titulo}: «{nombre}» is no Spanish")

    def _papeles(self, titulo, ventana):
        """Nothing that is shown is something unknown, and of what has a name one alone has the focus."""
        todos = list(dentro(ventana))
        self.faltas += [f"{titulo}: «{uno.name}» is a {uno.getRoleName()}" for uno in todos
                        if uno.getRole() in (pyatspi.ROLE_UNKNOWN, pyatspi.ROLE_INVALID)]
        con_foco = [uno for uno in todos if uno is not ventana and uno.name
                    and uno.getRole() != pyatspi.ROLE_PAGE_TAB and tiene(uno, pyatspi.STATE_FOCUSED)]
        for arbol in [uno for uno in todos if uno.getRole() == pyatspi.ROLE_TREE and uno not in con_foco]:
            con_foco += [uno for uno in arbol if tiene(uno, pyatspi.STATE_FOCUSED)]
        # Of a box inside a picker, or a line of a list, what it is in has the focus too.
        dentro_de_otro = [uno for uno in con_foco if not any(otro in con_foco for otro in list(dentro(uno))[1:])]
        if len(dentro_de_otro) > 1:
            self.faltas.append(f"{titulo}: the focus is on {[rotulo(uno) for uno in dentro_de_otro]}")

    def _rejilla(self, titulo, tabla):
        filas = tabla.queryTable()
        if filas.nRows == 0:
            return
        nombres = [filas.getColumnHeader(columna).name for columna in range(filas.nColumns)]
        self.faltas += [f"{titulo}: column {columna} of «{tabla.name}» is read without a heading"
                        for columna, nombre in enumerate(nombres) if not nombre]
        print(f"  {tabla.name}: " + ", ".join(f"{nombre} {filas.getAccessibleAt(0, columna).name}"
                                             for columna, nombre in enumerate(nombres)))


def etiquetas(objeto):
    """The names of the labels that stand for it."""
    return [relacion.getTarget(cual).name for relacion in objeto.getRelationSet()
            if relacion.getRelationType() == pyatspi.RELATION_LABELLED_BY for cual in range(relacion.getNTargets())]


def rotulo(objeto):
    """As it is read: its role and its name."""
    return f"{objeto.getRoleName()} «{objeto.name}»"


def lee_el_editor(escritorio, lector):
    """The editor, the list of suppliers, the comment and the forecasts, up to the print that is shown."""
    escritorio.teclas("Return")
    lector.lee("Reclamaciones a Proveedores", "text «Almacén»", "push button «Buscar el almacén»",
               "text «Nombre del almacén»", "text «Proveedor»", "text «Fecha»", "text «Observaciones del cargo»",
               "check box «Franquiciado»", "text «Artículo»", "text «Descripción del artículo»",
               "text «Observaciones de la línea»", "text «Unidades»", "text «Costo»", "text «Importe»",
               f"table «{LINEAS}»", "label «Total: 0,00»", "push button «+ Observaciones»", "push button «Modificar»",
               "push button «Eliminar»", "push button «Aceptar»", "push button «Cancelar»", "push button «Salir»")
    escritorio.foco("Almacén")
    escritorio.teclas("Return")
    escritorio.foco("Proveedor")
    escritorio.escribe("9999")
    lector.oye("No existe el proveedor", lambda: escritorio.teclas("Return"))
    escritorio.teclas("F2")
    lector.lee("Buscar el proveedor", "text «Buscar:»", "table «Buscar el proveedor»", "push button «Aceptar»")
    lector.oye("1 de 14", lambda: escritorio.escribe("nandu"))
    escritorio.teclas("Return")
    for nombre, texto in (("Fecha", ""), ("Observaciones del cargo", ""), ("Franquiciado", ""), ("Artículo", "1003"),
                          ("Descripción del artículo", ""), ("Observaciones de la línea", ""), ("Unidades", "2"),
                          ("Costo", "4")):
        escritorio.foco(nombre)
        if texto:
            escritorio.escribe(texto)
        escritorio.teclas("Return")
    escritorio.foco("Importe")
    lector.oye("Total: 8,00", lambda: escritorio.teclas("Return"))
    escritorio.filas(LINEAS, 1)
    lector.lee("Reclamaciones a Proveedores", "label «Total: 8,00»")
    escritorio.clic(escritorio.celda(LINEAS, 1, 1))
    escritorio.teclas("F4")
    lector.lee("Editor de Comentarios", "text «Comentario»", "push button «Aceptar»", "push button «Cancelar»")
    escritorio.teclas("F9")
    escritorio.ventana("Reclamaciones a Proveedores")


def lee_la_contabilizacion(escritorio, lector):
    """The forecasts, the notice of the save, the devices, and what is shown on the screen."""
    escritorio.teclas("alt+a")
    lector.lee("Previsiones de Pago", "text «Importe a contabilizar»", "label «Resto: 0,00»",
               "text «Importe de la previsión»", "text «Tipo de documento»", "text «Cuenta del banco»",
               "text «Vencimiento»", "table «Previsiones de pago»", "push button «Eliminar»")
    escritorio.clic(escritorio.celda("Previsiones de pago", 1, 0))
    lector.oye("Resto: 8,56", lambda: escritorio.teclas("Delete"))
    escritorio.teclas("alt+c")
    escritorio.ventana("Reclamaciones a Proveedores")
    escritorio.teclas("alt+a")
    escritorio.foco("Importe de la previsión")
    escritorio.teclas("F9")
    lector.lee("¡ Atención !", f"label «Atípico AT{datetime.date.today():%y}0001 generado correctamente.\nAsiento: 1»", "push button «Aceptar»")
    escritorio.teclas("Return")
    lector.lee("Seleccione Destino", "combo box «Pantalla»", "push button «Aceptar»", "push button «Cancelar»")
    escritorio.teclas("alt+a")
    lector.lee("Comercial Drago Sur, S.L. - Visor de Reportes")
    escritorio.teclas("Escape")
    escritorio.ventana("Reclamaciones a Proveedores")
    escritorio.teclas("alt+s")
    escritorio.ventana("Cargos atípicos")


def lee_el_visor(escritorio, lector):
    """The browser, which opens with the charges of the year, and the details."""
    mandos = [f"push button «{nombre}»" for nombre in (
        "Primer atípico de la lista", "Atípico anterior", "Atípico siguiente", "Último atípico de la lista", "Exportar…",
        "Imprimir", "Modificar", "Eliminar", "Salir")]
    escritorio.teclas("ctrl+b")
    escritorio.ventana("Visor de Atípicos")
    escritorio.filas("Atípicos", 1)
    escritorio.clic(escritorio.objeto("Fecha final"))
    escritorio.escribe(f"0101{datetime.date.today():%Y}")
    escritorio.teclas("Return")
    escritorio.filas("Atípicos", 0)
    escritorio.teclas("h")
    lector.oye("1 atípico", lambda: escritorio.teclas("Return"))
    lector.lee("Visor de Atípicos", "text «Almacén»", "text «Proveedor»", "text «Fecha inicial»", "text «Fecha final»",
               "push button «Buscar»", "table «Atípicos»", "page tab «Documentos»", *mandos)
    escritorio.teclas("Return")
    lector.lee("Visor de Atípicos", "text «Almacén del atípico»", "text «Proveedor del atípico»",
               "text «Fecha del atípico»", "table «Líneas del atípico»", "page tab «Detalles»", *mandos)


def lee_el_manual(escritorio, lector):
    """The manual, beside the main window, and a search in it."""
    escritorio.teclas("F1")
    debidos = ("text «Buscar en el manual»", "tree «Índice del manual»", "label «Página del manual»")
    lector.lee("Manual", *debidos)
    escritorio.teclas("ctrl+f")
    escritorio.foco("Buscar en el manual")
    lector.lee("Manual", *debidos)
    lector.oye("apartados", lambda: escritorio.escribe("previsiones"))
    escritorio.teclas("Down", "Return")
    escritorio.foco("Página del manual")
    lector.lee("Manual", *debidos)
    escritorio.teclas("Escape")
    escritorio.ventana("Cargos atípicos")


def lee_el_resumen(escritorio, lector):
    """Charges added up, as a table and as charts."""
    escritorio.teclas("ctrl+t")
    escritorio.ventana("Resumen de cargos")
    escritorio.filas("Resumen de cargos", 1)
    lector.lee("Resumen de cargos", "combo box «proveedor»", "text «Primer día»", "text «Último día»",
               "text «Sólo el almacén»", "text «Sólo el proveedor»", "table «Resumen de cargos»",
               "push button «Exportar…»", "push button «Cerrar»")
    escritorio.teclas("alt+e")
    lector.lee("Exportar el resumen", "text «Nombre de fichero:»", "push button «Guardar»")
    escritorio.teclas("Escape")
    escritorio.ventana("Resumen de cargos")
    escritorio.teclas("Escape")
    escritorio.ventana("Cargos atípicos")


def lee_las_fichas(escritorio, lector):
    """Suppliers and articles: the list of them, and one."""
    for letra, titulo, columna, debidos in (
            ("p", "Proveedores", "Modificar el proveedor", ("text «NIF:»", "combo box «2  A 30 días»")),
            ("t", "Artículos", "Modificar el artículo", ("text «Cuenta de ingresos:»",))):
        escritorio.elige("alt+m", letra, titulo)
        lector.lee(titulo, "text «Buscar:»", f"table «{titulo}»", "push button «Nuevo»", "push button «Modificar»",
                   "push button «Eliminar»", "push button «Cerrar»")
        escritorio.teclas("Return")
        lector.lee(columna, "text «Nombre:»", "push button «Aceptar»", "push button «Cancelar»", *debidos)
        escritorio.teclas("Escape")
        escritorio.ventana(titulo)
        escritorio.teclas("Escape")
        escritorio.ventana("Cargos atípicos")


def lee_los_elegidos(escritorio, lector):
    """What is done with the charges chosen in the main window, and what is pending."""
    escritorio.filas("Últimos cargos", 1)
    escritorio.teclas("alt+l", "ctrl+shift+p")
    lector.lee("Seleccione Destino", "push button «Aceptar»", "push button «Cancelar»")
    escritorio.teclas("Escape")
    escritorio.ventana("Cargos atípicos")
    escritorio.teclas("ctrl+p")
    lector.lee("Guardar como PDF", "text «Nombre de fichero:»", "push button «Guardar»")
    escritorio.teclas("Escape")
    escritorio.ventana("Cargos atípicos")
    escritorio.teclas("ctrl+e")
    lector.lee("Exportar la lista", "text «Nombre de fichero:»", "push button «Guardar»")
    escritorio.teclas("Escape")
    escritorio.ventana("Cargos atípicos")


def lee_el_historial(escritorio, lector):
    """Who has done what to the chosen charge, and what of it each time."""
    escritorio.teclas("alt+l")
    lector.oye("sucesos del cargo", lambda: escritorio.teclas("ctrl+h"))
    lector.lee("Historial de un cargo", "text «Código:»", "text «Almacén»", "table «Lo que se ha hecho con el cargo»",
               "table «Antes y después»", "push button «Ver»", "push button «Cerrar»")
    escritorio.teclas("Escape")
    escritorio.ventana("Cargos atípicos")


def lee_lo_pendiente(escritorio, lector):
    """The charge is deleted, and its entry is what nobody needs any more."""
    escritorio.teclas("ctrl+b")
    escritorio.ventana("Visor de Atípicos")
    escritorio.filas("Atípicos", 1)
    escritorio.foco("Atípicos")
    escritorio.teclas("alt+e")
    lector.lee("¡ Atención !", "push button «Sí»", "push button «No»")
    escritorio.teclas("alt+s")
    escritorio.filas("Atípicos", 0)
    escritorio.teclas("alt+s")
    escritorio.ventana("Cargos atípicos")
    escritorio.espera("the entry without charge", lambda: tiene(
        escritorio.objeto("Sin cargo…", "push button"), pyatspi.STATE_SENSITIVE))
    escritorio.teclas("alt+g")
    lector.lee("Asientos sin cargo", "text «Orden que lo arregla:»", "push button «Anular…»", "push button «Cerrar»")
    escritorio.teclas("alt+a")
    lector.lee("Anular asientos sin cargo", "table «Asientos sin cargo»", "push button «Anular los que sobran»")
    escritorio.teclas("Escape")
    escritorio.ventana("Cargos atípicos")


def lee_otra_empresa(escritorio, lector):
    """Another company is asked for, made, and asked for its data."""
    escritorio.teclas("ctrl+o")
    lector.lee("Elegir empresa", "text «Carpeta, o dirección de un servidor:»",
               "radio button «Propia: se preguntan sus datos»", "push button «Abrir»", "push button «Crear»",
               "push button «Cerrar»")
    escritorio.teclas("alt+r", "ctrl+a")
    escritorio.escribe(str(escritorio.carpeta / "propia"))
    escritorio.teclas("alt+p", "alt+c")
    lector.lee("Datos de la empresa", "text «Nombre:»", "text «NIF:»", "text «Nombre del proveedor:»",
               "push button «Aceptar»", "push button «Cancelar»")
    escritorio.teclas("alt+c")


def main():
    with Escritorio(sys.argv[1]) as escritorio:
        escritorio.ordena("crear")
        # On the screen, and nowhere else: what is printed is a window too.
        escritorio.cambia("UPDATE Parametros SET Valor = CASE Clave WHEN 'Proveedores_AtipicosDispImpresoDefault' "
                          "THEN '2' ELSE '0' END WHERE Clave LIKE 'Proveedores_AtipicosDisp%'")
        escritorio.abre()
        lector = Lector(escritorio)
        lector.lee("Empresa y usuario", "push button «Aceptar»")
        escritorio.teclas("Return")
        lector.lee("Cargos atípicos", "push button «Reclamaciones a Proveedores»")
        lee_el_editor(escritorio, lector)
        lee_la_contabilizacion(escritorio, lector)
        lee_el_visor(escritorio, lector)
        escritorio.teclas("alt+s")
        escritorio.ventana("Cargos atípicos")
        lee_el_manual(escritorio, lector)
        lee_el_resumen(escritorio, lector)
        lee_las_fichas(escritorio, lector)
        lee_los_elegidos(escritorio, lector)
        lee_el_historial(escritorio, lector)
        lee_lo_pendiente(escritorio, lector)
        lee_otra_empresa(escritorio, lector)
    if lector.faltas:
        sys.exit("a screen reader is not told:\n" + "\n".join(lector.faltas))


if __name__ == "__main__":
    main()
