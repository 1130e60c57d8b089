"""Objects written in Python as automation sees them: what a table of functions, shared by all of them, does for the
address that it is given.
"""
import ctypes

from automatizacion import (DISP_E_EXCEPTION, PONE, PONE_OBJETO, PROPIAS, S_OK, Excepcion, Fallo, Objeto, Parametros,
                            Variante, guarda, lee, nuevo_texto)

E_NOINTERFACE, E_NOTIMPL = -0x7FFFBFFE, -0x7FFFBFFF
DISP_E_MEMBERNOTFOUND, DISP_E_UNKNOWNNAME = -0x7FFDFFFD, -0x7FFDFFFA

_prestados = {}


class _Prestado(ctypes.Structure):
    _fields_ = [("tabla", ctypes.c_void_p)]


def presta(objeto):
    """The object as automation sees it: its public names, which compare without case. Kept while anybody holds it."""
    cara = _Prestado(ctypes.addressof(_TABLA))
    direccion = ctypes.addressof(cara)
    nombres = [nombre for nombre in dir(objeto) if not nombre.startswith("_")]
    _prestados[direccion] = {"cara": cara, "objeto": objeto, "nombres": nombres, "veces": 1}
    return Objeto(direccion)


def _pide_cara(este, identificador, otra):
    octetos = ctypes.string_at(identificador, 16)
    suya = any(octetos == bytes(una.octetos) for una in PROPIAS)
    ctypes.cast(otra, ctypes.POINTER(ctypes.c_void_p))[0] = este if suya else None
    if not suya:
        return E_NOINTERFACE
    _retiene(este)
    return S_OK


def _retiene(este):
    _prestados[este]["veces"] += 1
    return _prestados[este]["veces"]


def _suelta(este):
    _prestados[este]["veces"] -= 1
    quedan = _prestados[este]["veces"]
    if quedan == 0:
        del _prestados[este]
    return quedan


def _numeros(este, _identificador, nombres, cuantos, _idioma, numeros):
    letras = ctypes.cast(nombres, ctypes.POINTER(ctypes.c_void_p))[0]
    fin = letras
    while ctypes.string_at(fin, 2) != b"\0\0":
        fin += 2
    buscado = ctypes.string_at(letras, fin - letras).decode("utf-16-le").lower()
    suyos = [nombre.lower() for nombre in _prestados[este]["nombres"]]
    encontrado = cuantos == 1 and buscado in suyos
    ctypes.cast(numeros, ctypes.POINTER(ctypes.c_int32))[0] = suyos.index(buscado) + 1 if encontrado else -1
    return S_OK if encontrado else DISP_E_UNKNOWNNAME


def _ejecuta(este, numero, _identificador, _idioma, uso, parametros, resultado, excepcion, _malo):
    prestado = _prestados[este]
    if not 1 <= numero <= len(prestado["nombres"]):
        return DISP_E_MEMBERNOTFOUND
    try:
        dados = ctypes.cast(parametros, ctypes.POINTER(Parametros)).contents
        valores = [lee(dados.valores[i]) for i in reversed(range(dados.cuantos))]
        nombre = prestado["nombres"][numero - 1]
        if uso & (PONE | PONE_OBJETO):
            setattr(prestado["objeto"], nombre, valores[-1])
            return S_OK
        miembro = getattr(prestado["objeto"], nombre)
        valor = miembro(*valores) if callable(miembro) else miembro
        if resultado:
            guarda(ctypes.cast(resultado, ctypes.POINTER(Variante)).contents, valor)
        return S_OK
    except Exception as error:  # none of Python's may leave through a table of functions
        if excepcion:
            _cuenta(ctypes.cast(excepcion, ctypes.POINTER(Excepcion)).contents, error)
        return DISP_E_EXCEPTION


def _cuenta(excepcion, error):
    fallo = error if isinstance(error, Fallo) else Fallo(51, "Python", f"{type(error).__name__}: {error}")
    ctypes.memset(ctypes.byref(excepcion), 0, ctypes.sizeof(excepcion))
    excepcion.resultado = fallo.numero if not 0 < fallo.numero <= 0xFFFF else 0x800A0000 - 2**32 | fallo.numero
    excepcion.fuente, excepcion.descripcion = nuevo_texto(fallo.fuente), nuevo_texto(fallo.descripcion)


_P, _I, _U, _W = ctypes.c_void_p, ctypes.c_int32, ctypes.c_uint32, ctypes.c_uint16
_FUNCIONES = [  # in the order of the table; kept, because the table holds no more than their addresses
    ctypes.CFUNCTYPE(_I, _P, _P, _P)(_pide_cara),
    ctypes.CFUNCTYPE(_U, _P)(_retiene),
    ctypes.CFUNCTYPE(_U, _P)(_suelta),
    ctypes.CFUNCTYPE(_I, _P, _P)(lambda _este, _cuantos: E_NOTIMPL),
    ctypes.CFUNCTYPE(_I, _P, _U, _U, _P)(lambda _este, _cual, _idioma, _tipo: E_NOTIMPL),
    ctypes.CFUNCTYPE(_I, _P, _P, _P, _U, _U, _P)(_numeros),
    ctypes.CFUNCTYPE(_I, _P, _I, _P, _U, _W, _P, _P, _P, _P)(_ejecuta),
]
_TABLA = (ctypes.c_void_p * len(_FUNCIONES))(*[ctypes.cast(funcion, ctypes.c_void_p).value for funcion in _FUNCIONES])
