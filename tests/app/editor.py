"""The charge's form under somebody's fingers, for the scripts of this folder."""
LINEAS = "Líneas del cargo"


def campo(escritorio, nombre, texto):
    """Types over what a box holds, once it has the focus, and moves on."""
    escritorio.foco(nombre)
    if texto:
        escritorio.escribe(texto)
    escritorio.teclas("Return")


def cabecera(escritorio, proveedor, almacen="", fecha="", observaciones="", franquiciado=False):
    """The header of a charge, from the warehouse on."""
    campo(escritorio, "Almacén", almacen)
    campo(escritorio, "Proveedor", proveedor)
    campo(escritorio, "Fecha", fecha)
    campo(escritorio, "Observaciones del cargo", observaciones)
    escritorio.foco("Franquiciado")
    escritorio.teclas(*(["space"] if franquiciado else []), "Return")


def linea(escritorio, articulo, unidades, costo, observaciones="", descripcion=""):
    """A line, accepted in the amount."""
    campo(escritorio, "Artículo", articulo)
    campo(escritorio, "Descripción del artículo", descripcion)
    campo(escritorio, "Observaciones de la línea", observaciones)
    campo(escritorio, "Unidades", unidades)
    campo(escritorio, "Costo", costo)
    campo(escritorio, "Importe", "")
    escritorio.foco("Artículo")


def acepta(escritorio):
    """Alt+A, the proposed forecasts as they are."""
    escritorio.teclas("alt+a")
    escritorio.ventana("Previsiones de Pago")
    escritorio.foco("Importe de la previsión")
    escritorio.teclas("F9")


def despacha_avisos(escritorio):
    """The notice of the save, and no print."""
    escritorio.ventana("¡ Atención !")
    escritorio.teclas("Return")
    escritorio.ventana("Seleccione Destino")
    escritorio.teclas("Escape")
    escritorio.ventana("Reclamaciones a Proveedores")
