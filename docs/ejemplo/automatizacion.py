"""The binary face of automation objects on Linux, by ctypes alone: the layouts of automation/com.hpp.

`Componente` makes objects of a library, `Objeto` calls what an object of automation offers. One thread only, as the
component asks for.
"""
import ctypes
import datetime
import decimal
import uuid

S_OK, DISP_E_EXCEPTION = 0, -0x7FFDFFF7
VACIO, NULO, ENTERO, LARGO, REAL, MONEDA, FECHA, TEXTO, DESPACHO, ERROR, LOGICO, VARIANTE, DESCONOCIDO = (
    0, 1, 2, 3, 5, 6, 7, 8, 9, 10, 11, 12, 13)
POR_REFERENCIA = 0x4000
LEE, PONE, PONE_OBJETO = 1 | 2, 4, 8  # a method or a property to read; a value; an object
ASIGNADO, ENUMERA = -3, -4
NADA = object()  # no object, where one may be
DIA_CERO = datetime.datetime(1899, 12, 30)

libc = ctypes.CDLL(None)
libc.malloc.restype, libc.malloc.argtypes = ctypes.c_void_p, [ctypes.c_size_t]
libc.free.restype, libc.free.argtypes = None, [ctypes.c_void_p]


class Guid(ctypes.Structure):
    """An identifier; made of its text."""
    _fields_ = [("octetos", ctypes.c_ubyte * 16)]

    def __init__(self, texto="00000000-0000-0000-0000-000000000000"):
        super().__init__((ctypes.c_ubyte * 16)(*uuid.UUID(texto).bytes_le))


NINGUNO = Guid()
FABRICA = Guid("00000001-0000-0000-C000-000000000046")
PROPIAS = [Guid("00000000-0000-0000-C000-000000000046"), Guid("00020400-0000-0000-C000-000000000046")]
ENUMERADOR = Guid("00020404-0000-0000-C000-000000000046")


class _Contenido(ctypes.Union):
    _fields_ = [("entero", ctypes.c_int16), ("largo", ctypes.c_int32), ("ancho", ctypes.c_int64),
                ("real", ctypes.c_double), ("puntero", ctypes.c_void_p), ("registro", ctypes.c_void_p * 2)]


class Variante(ctypes.Structure):
    """A value and its type."""
    _anonymous_ = ["contenido"]
    _fields_ = [("vt", ctypes.c_uint16), ("reservado", ctypes.c_uint16 * 3), ("contenido", _Contenido)]


class Parametros(ctypes.Structure):
    """The arguments of a call, the last one first."""
    _fields_ = [("valores", ctypes.POINTER(Variante)), ("nombrados", ctypes.POINTER(ctypes.c_int32)),
                ("cuantos", ctypes.c_uint32), ("cuantos_nombrados", ctypes.c_uint32)]


class Excepcion(ctypes.Structure):
    """What a call raised."""
    _fields_ = [("codigo", ctypes.c_uint16), ("reservado", ctypes.c_uint16), ("fuente", ctypes.c_void_p),
                ("descripcion", ctypes.c_void_p), ("ayuda", ctypes.c_void_p), ("contexto", ctypes.c_uint32),
                ("nada", ctypes.c_void_p), ("relleno", ctypes.c_void_p), ("resultado", ctypes.c_int32)]


class Fallo(Exception):
    """An error of automation: its number as a person reads it, its source and its words."""

    def __init__(self, numero, fuente, descripcion):
        super().__init__(f"error {numero} de {fuente}: {descripcion}")
        self.numero, self.fuente, self.descripcion = numero, fuente, descripcion


def nuevo_texto(texto):
    """A text as automation passes it: UTF-16, its length in bytes in the four bytes before it."""
    octetos = texto.encode("utf-16-le")
    bloque = libc.malloc(8 + len(octetos) + 2)
    ctypes.memmove(bloque + 4, len(octetos).to_bytes(4, "little"), 4)
    ctypes.memmove(bloque + 8, octetos + b"\0\0", len(octetos) + 2)
    return bloque + 8


def lee_texto(puntero):
    """The text there; empty for none."""
    if not puntero:
        return ""
    return ctypes.string_at(puntero, int.from_bytes(ctypes.string_at(puntero - 4, 4), "little")).decode("utf-16-le")


def recoge_texto(puntero):
    """The text there, which is freed."""
    texto = lee_texto(puntero)
    if puntero:
        libc.free(puntero - 8)
    return texto


def guarda(variante, valor):
    """Writes a value of Python into one of automation, which is given what it holds."""
    ctypes.memset(ctypes.byref(variante), 0, ctypes.sizeof(variante))
    if valor is None:
        variante.vt = VACIO
    elif valor is NADA:
        variante.vt = DESPACHO
    elif isinstance(valor, bool):
        variante.vt, variante.entero = LOGICO, -1 if valor else 0
    elif isinstance(valor, int):
        variante.vt, variante.largo = LARGO, valor
    elif isinstance(valor, float):
        variante.vt, variante.real = REAL, valor
    elif isinstance(valor, decimal.Decimal):
        variante.vt, variante.ancho = MONEDA, int((valor * 10000).to_integral_value())
    elif isinstance(valor, datetime.datetime):
        variante.vt, variante.real = FECHA, (valor - DIA_CERO) / datetime.timedelta(days=1)
    elif isinstance(valor, str):
        variante.vt, variante.puntero = TEXTO, nuevo_texto(valor)
    else:
        variante.vt, variante.puntero = DESPACHO, valor.retenido()


def lee(variante):
    """The value of Python that stands there; what is there stays its owner's."""
    if variante.vt == POR_REFERENCIA | VARIANTE:
        return Referencia(ctypes.cast(variante.puntero, ctypes.POINTER(Variante)).contents)
    if variante.vt in (VACIO, NULO, ERROR):
        return None
    if variante.vt == LOGICO:
        return variante.entero != 0
    if variante.vt == ENTERO:
        return variante.entero
    if variante.vt == LARGO:
        return variante.largo
    if variante.vt == REAL:
        return variante.real
    if variante.vt == MONEDA:
        return decimal.Decimal(variante.ancho) / 10000
    if variante.vt == FECHA:
        return DIA_CERO + datetime.timedelta(days=variante.real)
    if variante.vt == TEXTO:
        return lee_texto(variante.puntero)
    if variante.vt in (DESPACHO, DESCONOCIDO):
        if not variante.puntero:
            return None
        objeto = Objeto(variante.puntero)
        objeto.retenido()
        return objeto
    raise Fallo(13, "Python", f"No se conoce el tipo {variante.vt}.")


def vacia(variante):
    """Gives up what the value holds."""
    if variante.vt == TEXTO and variante.puntero:
        libc.free(variante.puntero - 8)
    elif variante.vt in (DESPACHO, DESCONOCIDO) and variante.puntero:
        Objeto(variante.puntero)  # lets go of it when it goes
    variante.vt = VACIO


def comprueba(resultado, excepcion=None):
    """Raises what a result, and the exception that came with it, stand for."""
    if resultado >= 0:
        return
    if resultado != DISP_E_EXCEPTION or excepcion is None:
        raise Fallo(resultado, "automatización", f"resultado {resultado & 0xFFFFFFFF:#010x}")
    codigo = excepcion.codigo or excepcion.resultado
    numero = codigo & 0xFFFF if codigo & 0xFFFF0000 == 0x800A0000 else codigo
    recoge_texto(excepcion.ayuda)
    raise Fallo(numero, recoge_texto(excepcion.fuente), recoge_texto(excepcion.descripcion))


class Referencia:
    """The caller's variable, lent for one call."""

    def __init__(self, variante):
        self._variante = variante

    def pon(self, valor):
        """Writes into it."""
        vacia(self._variante)
        guarda(self._variante, valor)


class Objeto:
    """A hold on an object, given up when this goes."""

    def __init__(self, puntero):
        self._puntero = puntero

    def __del__(self):
        self._tabla(2, ctypes.c_uint32)

    def _tabla(self, lugar, resultado, *argumentos):
        """Calls the function at that place of the object's table; addresses as `byref` gives them."""
        caras = ctypes.cast(self._puntero, ctypes.POINTER(ctypes.POINTER(ctypes.c_void_p)))
        simples = (ctypes.c_int32, ctypes.c_uint32, ctypes.c_uint16)
        tipos = [type(a) if isinstance(a, simples) else ctypes.c_void_p for a in argumentos]
        return ctypes.CFUNCTYPE(resultado, ctypes.c_void_p, *tipos)(caras[0][lugar])(self._puntero, *argumentos)

    def retenido(self):
        """Its address, with one hold more, which whoever gets it gives up."""
        self._tabla(1, ctypes.c_uint32)
        return self._puntero

    def cara(self, identificador):
        """Another interface of it."""
        otra = ctypes.c_void_p()
        comprueba(self._tabla(0, ctypes.c_int32, ctypes.byref(identificador), ctypes.byref(otra)))
        return Objeto(otra.value)

    def crea(self):
        """A new object, of a class factory."""
        nuevo = ctypes.c_void_p()
        comprueba(self._tabla(3, ctypes.c_int32, None, ctypes.byref(PROPIAS[1]), ctypes.byref(nuevo)))
        return Objeto(nuevo.value)

    def llama(self, nombre, *valores):
        """Calls a method, or reads a property, whichever the member is. Raises `Fallo`."""
        return self._invoca(self._numero(nombre), LEE, valores)

    def pon(self, nombre, valor):
        """Sets a property; `NADA` for no object. Raises `Fallo`."""
        simple = isinstance(valor, (bool, int, float, str, decimal.Decimal, datetime.datetime))
        self._invoca(self._numero(nombre), PONE if simple else PONE_OBJETO, [valor])

    def _numero(self, nombre):
        letras = ctypes.create_string_buffer(nombre.encode("utf-16-le") + b"\0\0")
        nombres, numero = (ctypes.c_void_p * 1)(ctypes.addressof(letras)), ctypes.c_int32()
        comprueba(self._tabla(5, ctypes.c_int32, ctypes.byref(NINGUNO), ctypes.byref(nombres), ctypes.c_uint32(1),
                              ctypes.c_uint32(0), ctypes.byref(numero)))
        return numero.value

    def _invoca(self, numero, uso, valores):
        variantes = (Variante * max(len(valores), 1))()
        for variante, valor in zip(variantes, reversed(valores)):
            guarda(variante, valor)
        asigna = uso != LEE
        nombrado = ctypes.c_int32(ASIGNADO)
        parametros = Parametros(variantes, ctypes.pointer(nombrado) if asigna else None, len(valores), int(asigna))
        resultado, excepcion = Variante(), Excepcion()
        try:
            comprueba(self._tabla(6, ctypes.c_int32, ctypes.c_int32(numero), ctypes.byref(NINGUNO), ctypes.c_uint32(0),
                                  ctypes.c_uint16(uso), ctypes.byref(parametros), ctypes.byref(resultado),
                                  ctypes.byref(excepcion), None), excepcion)
            return lee(resultado)
        finally:
            for variante in (resultado, *variantes):
                vacia(variante)

    def __iter__(self):
        """What a collection holds, one after the other."""
        enumerador = self._invoca(ENUMERA, LEE, []).cara(ENUMERADOR)
        while True:
            uno = Variante()
            resultado = enumerador._tabla(3, ctypes.c_int32, ctypes.c_uint32(1), ctypes.byref(uno), None)
            comprueba(resultado)
            if resultado != S_OK:
                return
            valor = lee(uno)
            vacia(uno)
            yield valor


class Componente:
    """A library that gives classes."""

    def __init__(self, fichero):
        self._biblioteca = ctypes.CDLL(fichero)

    def nuevo(self, identificador):
        """An object of that class. Raises `Fallo`."""
        fabrica = ctypes.c_void_p()
        comprueba(self._biblioteca.DllGetClassObject(ctypes.byref(Guid(identificador)), ctypes.byref(FABRICA),
                                                     ctypes.byref(fabrica)))
        return Objeto(fabrica.value).crea()

    def se_puede_descargar(self):
        """Whether nothing of it is held any more."""
        return self._biblioteca.DllCanUnloadNow() == S_OK
