"""The single faults that mutaciones.py puts into a source.

As many as possible are built into one program, each of which a run chooses by its number in the environment variable
MUTANTE, because building costs more than judging. With MUTANTES_ALCANZADOS a run writes into that file the numbers of
those that it came by. The others (of constants for the compiler, of parts of expressions over several lines) have to be
built one by one.
"""
import dataclasses
import re

# What is looked for in the code, and what takes its place.
OPERADORES = [
    (r" == ", " != "), (r" != ", " == "), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r"(?<=\w) \+ (?=\w)", " - "), (r"(?<=\w) - (?=\w)", " + "),
    (r"(?<=\w) \* (?=\w)", " / "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"(?<=[(\s])!(?=[\w(])", ""),
    (r"\+\+", "--"), (r" \+= ", " -= "), (r" -= ", " += "), (r"(?<![\w.'\"])0(?![\w.'\"])", "1"),
    (r"(?<![\w.'\"])1(?![\w.'\"])", "2"), (r"\bbreak;", "continue;"),
]
SIN_CONDICION = re.compile(r"^\s*(?:\} )?(?:else )?if \((?!constexpr)([^;=]*)\)(?: \{)?$")
ASIGNACION = re.compile(r"^\s+(?:this->)?\w+(?:(?:->|\.|::)\w+|\[[^\]]*\])* [-+|&]?= [^;]*;$")
LLAMADA = re.compile(r"^\s{4,}(?!(?:return|throw|case|using|else|if|for|while|switch|static_assert|catch)\b)"
                     r"(?:emit )?[\w:]+(?:<[\w:]+>)?(?:(?:->|\.)\w+|\([^()]*\)|\[[^\[\]]*\])*\(")
SALIDA = re.compile(r"^\s+return;$")

# The lines of which one of two can be chosen while it runs: the groups are before, what is chosen, behind.
CONDICION = re.compile(r"^(\s*(?:\} )?(?:else )?(?:if|while) \((?!constexpr|const ))([^;]*)(\)(?: \{)?)$")
RESULTADO = re.compile(r"^(\s*return )([^;{}]+)(;)$")
VALOR = re.compile(r"^(\s*(?!static|constexpr)(?:const )?[\w:<>]+[&*]* \w+ = )([^;{}]+)(;)$")
ORDEN = re.compile(r"^\s+(?!return|throw)(?:\+\+|--|break;|[\w:]+(?:(?:->|\.)\w+|\([^()]*\)|\[[^\[\]]*\])*"
                   r"(?:\(| [-+|&]?= |\+\+|--))")

CABECERA = """
#include <cstdio>
#include <cstdlib>
static bool mutante_(int este)
{
    struct Vistos {
        const char* vivo = std::getenv("MUTANTE");
        const char* fichero = std::getenv("MUTANTES_ALCANZADOS");
        const int numero = vivo == nullptr ? -1 : std::atoi(vivo);
        bool vistos[%d] = {};
        ~Vistos()
        {
            std::FILE* salida = fichero == nullptr ? nullptr : std::fopen(fichero, "a");
            for (int i = 0; salida != nullptr && i < %d; ++i)
                if (vistos[i])
                    std::fprintf(salida, "%%d\\n", i);
            if (salida != nullptr)
                std::fclose(salida);
        }
    };
    static Vistos vistos;
    vistos.vistos[este] = true;
    return vistos.numero == este;
}
"""


@dataclasses.dataclass(frozen=True)
class Mutante:
    """Between two places of a source stands something else."""
    desde: int
    hasta: int
    pone: str

    def en(self, entero):
        """The source with it."""
        return entero[:self.desde] + self.pone + entero[self.hasta:]

    def linea(self, entero):
        """The number of the line that it changes."""
        quitado = entero[self.desde:self.hasta]
        return entero.count("\n", 0, self.desde + len(quitado) - len(quitado.lstrip())) + 1

    def lineas(self, entero):
        """The numbers of all lines that it changes."""
        return range(self.linea(entero), entero.count("\n", 0, self.hasta) + 2)


def lineas_de_codigo(entero):
    """(place, line) of every line, texts and comments blanked; None for what is no code, or not built here."""
    lugar, ocultas, es_de_windows = 0, [], False
    for linea in entero.splitlines(keepends=True):
        if linea.startswith("#if"):
            ocultas.append("ifdef _WIN32" in linea)
            es_de_windows = "_WIN32" in linea
        elif linea.startswith("#else") and es_de_windows:
            ocultas[-1] = not ocultas[-1]
        elif linea.startswith("#endif"):
            ocultas.pop()
        codigo = re.sub(r"""(['"])(?:\\.|(?!\1)[^\\])*\1""", lambda m: '"' + "\x00" * (len(m.group()) - 2) + '"', linea)
        codigo = codigo.split("//")[0].rstrip("\n")
        fuera = any(ocultas) or codigo.lstrip().startswith(("#", "template", "static_assert", "namespace"))
        yield lugar, None if fuera else codigo.rstrip() if "//" in linea else codigo
        lugar += len(linea)


def fin_de_llamada(codigo, abre):
    """Behind the ';' of the call whose parenthesis opens there; None if something else follows it."""
    hondo = 0
    for lugar in range(abre, len(codigo)):
        hondo += {"(": 1, ")": -1}.get(codigo[lugar], 0)
        if hondo == 0:
            return lugar + 2 if codigo[lugar + 1:lugar + 2] == ";" else None
    return None


def candidatos(entero):
    """All mutants of a source."""
    lineas = list(lineas_de_codigo(entero))
    visible = "".join((codigo or "").ljust(fin - lugar) for (lugar, codigo), fin in
                      zip(lineas, [lugar for lugar, _ in lineas[1:]] + [len(entero)]))
    antes = ""
    for lugar, codigo in lineas:
        if not codigo:
            continue
        hechos = 0
        for busca, pone in OPERADORES:
            for hallado in re.finditer(busca, codigo):
                hechos += 1
                yield Mutante(lugar + hallado.start(), lugar + hallado.end(), pone)
        if not hechos and (hallado := SIN_CONDICION.match(codigo)):
            yield Mutante(lugar + hallado.start(1), lugar + hallado.end(1), "!(" + entero[
                lugar + hallado.start(1):lugar + hallado.end(1)] + ")")
        if ASIGNACION.match(codigo) or SALIDA.match(codigo):
            yield Mutante(lugar + len(codigo) - len(codigo.lstrip()), lugar + len(codigo), ";")
        elif (hallado := LLAMADA.match(codigo)) and re.search(r"(?:[;{})]|else|\b\w+:)$", antes):
            fin = fin_de_llamada(visible, lugar + hallado.end() - 1)
            if fin is not None:
                yield Mutante(lugar + len(codigo) - len(codigo.lstrip()), fin, ";")
        antes = codigo.rstrip()


def elegible(codigo, entero, lugar, suyos):
    """What stands for the line with all its mutants in it, each chosen by its number; None if it cannot be so."""
    original = entero[lugar:lugar + len(codigo)]

    def con(mutante, grupo=None):
        desde, hasta = (0, len(codigo)) if grupo is None else grupo
        return (original[desde:mutante.desde - lugar] + mutante.pone + original[mutante.hasta - lugar:hasta]).strip()

    for forma in (CONDICION, RESULTADO, VALOR):
        hallado = forma.match(codigo)
        if hallado and all(hallado.start(2) <= m.desde - lugar and m.hasta - lugar <= hallado.end(2) for m in suyos.values()):
            envuelve = "bool({})" if forma is CONDICION else "({})"
            elige = "".join(f"mutante_({numero}) ? {envuelve.format(con(m, hallado.span(2)))} : "
                            for numero, m in suyos.items())
            return original[:hallado.end(1)] + elige + envuelve.format(hallado.group(2) and original[
                hallado.start(2):hallado.end(2)]) + original[hallado.start(3):]
    if ORDEN.match(codigo) and codigo.endswith(";") and codigo.count("(") == codigo.count(")"):
        elige = "".join(f"if (mutante_({numero})) {{ {con(m)} }} else " for numero, m in suyos.items())
        return f"{{ {elige}{{ {original.strip()} }} }}"
    return None


def de_un_trozo(numero, mutante, entero):
    """What stands for the piece alone, whatever is around it; None if it cannot be so."""
    quitado = entero[mutante.desde:mutante.hasta]
    if quitado in ("true", "false", "0", "1"):
        return f"(mutante_({numero}) ? {mutante.pone} : {quitado})"
    if quitado == "!":
        return f"mutante_({numero}) != !"
    if mutante.pone == ";":
        return f"{{ if (!mutante_({numero})) {{ {quitado} }} }}"
    return None


def juntos(entero, numerados):
    """The source with the numbered mutants in it, and the numbers of those that it could not take.

    numerados: the mutants by number. Lines keep their numbers for the compiler.
    """
    cambios, puestos = {}, set()  # of each place: (its end, what stands there)
    por_linea = {}
    for numero, mutante in numerados.items():
        por_linea.setdefault(entero.rfind("\n", 0, mutante.desde) + 1, {})[numero] = mutante
    for lugar, codigo in lineas_de_codigo(entero):
        suyos = por_linea.get(lugar, {})
        enteros = {n: m for n, m in suyos.items() if m.hasta <= lugar + len(codigo or "")}
        texto = elegible(codigo, entero, lugar, enteros) if enteros else None
        if texto is not None:
            cambios[lugar] = (lugar + len(codigo), texto)
            puestos |= enteros.keys()
        else:
            for numero, mutante in enteros.items():
                es_llamada = mutante.pone == ";" and entero[mutante.desde:mutante.hasta] != "return;"
                if not es_llamada and (trozo := de_un_trozo(numero, mutante, entero)) is not None:
                    cambios[mutante.desde] = (mutante.hasta, trozo)
                    puestos.add(numero)
    # Calls over several lines, around what is in them.
    for numero, mutante in sorted(numerados.items(), key=lambda uno: uno[1].hasta - uno[1].desde):
        if numero not in puestos and mutante.pone == ";" and not any(
                desde < mutante.desde < fin for desde, (fin, _) in cambios.items()):
            dentro = {d: c for d, c in cambios.items() if mutante.desde <= d < mutante.hasta}
            for desde in dentro:
                del cambios[desde]
            cambios[mutante.desde] = (mutante.hasta, f"{{ if (!mutante_({numero})) {{ "
                                      + aplica(entero, dentro, mutante.desde, mutante.hasta) + " } }")
            puestos.add(numero)
    cabecera = entero.rfind("#include")
    cabecera = entero.find("\n", cabecera) + 1
    cuantos = max(numerados, default=0) + 1
    sigue = f'#line {entero.count(chr(10), 0, cabecera) + 1}\n'
    return (aplica(entero, cambios, 0, cabecera) + CABECERA % (cuantos, cuantos) + sigue
            + aplica(entero, cambios, cabecera, len(entero))), set(numerados) - puestos


def aplica(entero, cambios, desde, hasta):
    """That part of the source with the changes that begin in it."""
    texto = ""
    for lugar, (fin, pone) in sorted(cambios.items()):
        if desde <= lugar < hasta:
            texto += entero[desde:lugar] + pone
            desde = fin
    return texto + entero[desde:hasta]
