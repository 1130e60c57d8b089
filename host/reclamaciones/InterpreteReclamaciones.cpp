#include "host/reclamaciones/InterpreteReclamaciones.hpp"

#include "host/reclamaciones/Codificacion.hpp"
#include "host/sql/Anchos.hpp"
#include "host/sql/Guiones.hpp"
#include "host/terminal/Tabla.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"
#include "runtime/Variant.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::app {

namespace {

    using Columna = InterpreteReclamaciones::Columna;

    constexpr std::array<std::string_view, Columna::cuantas> titulos{ "referencia", "almacen", "proveedor",
        "fecha", "observaciones", "franquiciado", "articulo", "descripcion", "unidades", "costo",
        "observaciones_linea" };
    constexpr auto ninguna = std::size_t{ Columna::cuantas }; ///< the row as a whole

    constexpr auto comillas = "las comillas no están bien puestas (un texto con comillas o con «;» va entre "
                              "comillas, y las de dentro, dobles).";

    [[noreturn]] void falla(const std::string& motivo) { throw ErrorDeContenido(motivo); }

    std::size_t ancho_de(std::string_view tabla, std::string_view columna)
    {
        return sql::ancho_de_texto(guiones::orvalin(), tabla, columna);
    }

}

InterpreteReclamaciones::InterpreteReclamaciones(const FilaCsv& cabecera)
    : m_orden(orden_de(cabecera))
{
    m_anchos[referencia] = ancho_de("Importaciones", "Referencia");
    m_anchos[observaciones] = ancho_de("Proveedores_Cargos_Atipicos", "Observ");
    m_anchos[descripcion] = ancho_de("Proveedores_Cargos_Atipicos_Lineas", "Descripcion");
    m_anchos[observaciones_linea] = ancho_de("Proveedores_Cargos_Atipicos_Lineas", "Observ");
}

InterpreteReclamaciones::Orden InterpreteReclamaciones::orden_de(const FilaCsv& cabecera)
{
    if (cabecera.mal_entrecomillada)
        falla("fila " + std::to_string(cabecera.numero) + ": " + comillas);
    Orden orden{};
    orden.fill(std::string::npos);
    for (std::size_t i = 0; i < cabecera.campos.size(); ++i) {
        const auto& titulo = cabecera.campos[i];
        const auto lugar = std::find(titulos.begin(), titulos.end(), titulo);
        if (lugar == titulos.end())
            falla("fila 1: no se conoce la columna «" + en_una_linea(titulo) + "».");
        auto& sitio = orden[static_cast<std::size_t>(lugar - titulos.begin())];
        if (sitio != std::string::npos)
            falla("fila 1: la columna «" + titulo + "» está dos veces.");
        sitio = i;
    }
    for (std::size_t i = 0; i < cuantas; ++i)
        if (orden[i] == std::string::npos)
            falla("fila 1: falta la columna «" + std::string(titulos[i]) + "».");
    return orden;
}

Reclamacion InterpreteReclamaciones::empieza(const FilaCsv& fila)
{
    Reclamacion nueva;
    nueva.referencia = campo(fila, referencia);
    nueva.fila = fila.numero;
    m_cabecera.clear();
    const int ilegible = std::exchange(m_ilegible, 0);
    comprueba(nueva, fila);
    if (ilegible != 0)
        mal(ninguna,
            "«" + nueva.referencia + "» no se registra, porque la fila " + std::to_string(ilegible)
                + " podría ser suya.");
    if (!sin_referencia(fila))
        lee_referencia();
    if (m_bien)
        lee_cabecera();
    acaba_fila();
    return nueva;
}

void InterpreteReclamaciones::lee_referencia()
{
    const auto& leida = m_actual->referencia;
    if (leida.empty())
        return mal(referencia, "está vacía; es lo que une las líneas de un cargo.");
    if (const auto letras = sql::letras(leida); letras > m_anchos[referencia])
        mal(referencia,
            "tiene " + std::to_string(letras) + " letras y caben " + std::to_string(m_anchos[referencia])
                + ".");
    if (!m_vistas.insert(resumen_de(leida)).second) {
        m_actual->repetida = true;
        mal(referencia, "«" + leida + "» ya ha salido antes; sus filas han de ir seguidas.");
    }
}

bool InterpreteReclamaciones::continua(const Reclamacion& actual, const FilaCsv& fila) const
{
    return !actual.referencia.empty()
        && (sin_referencia(fila) || campo(fila, referencia) == actual.referencia);
}

void InterpreteReclamaciones::agrega(Reclamacion& actual, const FilaCsv& fila)
{
    comprueba(actual, fila);
    if (!sin_referencia(fila))
        repite_cabecera();
    acaba_fila();
}

const std::string& InterpreteReclamaciones::campo(const FilaCsv& fila, Columna columna) const
{
    static const std::string ninguno;
    const auto lugar = m_orden[columna];
    return lugar < fila.campos.size() ? fila.campos[lugar] : ninguno;
}

/// Whether a row is so badly quoted that it is not known whose it is.
bool InterpreteReclamaciones::sin_referencia(const FilaCsv& fila) const
{
    return fila.mal_entrecomillada && m_orden[referencia] >= fila.campos.size();
}

void InterpreteReclamaciones::mal(std::size_t columna, const std::string& motivo)
{
    repara(*m_actual, m_fila->numero, columna == ninguna ? "" : titulos[columna], motivo);
    m_bien = false;
}

/// Looks at a row as a whole before it is read into its charge.
void InterpreteReclamaciones::comprueba(Reclamacion& actual, const FilaCsv& fila)
{
    m_actual = &actual;
    m_fila = &fila;
    m_bien = true;
    if (fila.mal_entrecomillada) {
        const bool de_nadie = sin_referencia(fila);
        mal(ninguna,
            comillas
                + std::string(de_nadie ? " No se sabe de qué cargo es: ni el anterior ni el siguiente se "
                                         "registran."
                                       : ""));
        m_ilegible = de_nadie ? fila.numero : m_ilegible;
        return;
    }
    if (fila.campos.size() != cuantas)
        mal(ninguna,
            "tiene " + std::to_string(fila.campos.size()) + " campos y se esperaban "
                + std::to_string(+cuantas) + ".");
    if (fila.campos.size() <= cuantas)
        comprueba_letras();
}

void InterpreteReclamaciones::acaba_fila()
{
    if (m_bien)
        lee_linea();
}

void InterpreteReclamaciones::comprueba_letras()
{
    for (std::size_t i = 0; i < cuantas; ++i) {
        const auto& texto = campo(static_cast<Columna>(i));
        const auto codificacion = codificacion_de(texto);
        if (texto.find('\0') != std::string::npos)
            mal(i, "contiene un carácter nulo.");
        else if (codificacion == Codificacion::latin1)
            mal(i, "está en Latin-1 (Windows-1252), no en UTF-8; guarde el fichero como CSV en UTF-8.");
        else if (codificacion != Codificacion::utf8)
            mal(i, "no está en UTF-8; guarde el fichero con esa codificación.");
    }
}

void InterpreteReclamaciones::lee_cabecera()
{
    auto& nueva = *m_actual;
    for (const auto columna : { almacen, proveedor, fecha, observaciones, franquiciado })
        m_cabecera.push_back(campo(columna));
    nueva.almacen = static_cast<std::int16_t>(codigo(almacen, 32'767, true));
    nueva.proveedor = codigo(proveedor, 2'147'483'647, true);
    if (const auto leida = Date::de_texto(campo(fecha)))
        nueva.fecha = *leida;
    else
        mal(fecha, "«" + campo(fecha) + "» no es una fecha (dd/mm/aaaa).");
    nueva.observaciones = texto(observaciones);
    const auto& letra = campo(franquiciado);
    nueva.franquiciado = letra == "S" || letra == "s";
    if (!nueva.franquiciado && !letra.empty() && letra != "N" && letra != "n")
        mal(franquiciado, "«" + letra + "» ha de ser S o N.");
}

void InterpreteReclamaciones::repite_cabecera()
{
    std::size_t i = 0;
    for (const auto columna : { almacen, proveedor, fecha, observaciones, franquiciado }) {
        if (i < m_cabecera.size() && !campo(columna).empty() && campo(columna) != m_cabecera[i])
            mal(columna,
                "«" + campo(columna) + "» no es lo que dice la primera fila de «" + m_actual->referencia
                    + "» («" + m_cabecera[i] + "»).");
        ++i;
    }
}

void InterpreteReclamaciones::lee_linea()
{
    if (m_actual->lineas.size() == lineas_que_caben) {
        if (m_actual->valida)
            mal(ninguna,
                "«" + m_actual->referencia
                    + "» tiene más de 32.767 líneas, que no caben en un cargo; repártala en varios.");
        return;
    }
    LineaReclamada linea;
    linea.fila = m_fila->numero;
    linea.articulo = codigo(articulo, 2'147'483'647, false);
    linea.descripcion = texto(descripcion);
    linea.unidades = importe(unidades);
    linea.costo = importe(costo);
    linea.observaciones = texto(observaciones_linea);
    m_actual->lineas.push_back(std::move(linea));
}

/// A code from 1 to `maximo`; 0 when it is empty and need not be there, or is bad.
std::int32_t InterpreteReclamaciones::codigo(Columna columna, std::int32_t maximo, bool obligatorio)
{
    const auto& cifras = campo(columna);
    if (cifras.empty() && !obligatorio)
        return 0;
    const bool son_cifras = !cifras.empty() && cifras.find_first_not_of("0123456789") == std::string::npos;
    const double valor = son_cifras && cifras.size() <= 12 ? Val(cifras) : 0;
    if (valor < 1 || valor > maximo) {
        mal(columna, "«" + cifras + "» no es un código (un número de 1 a " + std::to_string(maximo) + ").");
        return 0;
    }
    return static_cast<std::int32_t>(valor);
}

Currency InterpreteReclamaciones::importe(Columna columna)
{
    const auto& cifras = campo(columna);
    const auto coma = cifras.find(',');
    if (coma != std::string::npos && cifras.find_last_not_of(' ') - coma > 4) {
        mal(columna, "«" + cifras + "» tiene más de cuatro decimales.");
        return {};
    }
    try {
        return lee_pantalla(cifras);
    } catch (const Error& error) {
        mal(columna,
            error.numero() == numero_error::desbordamiento
                ? "«" + cifras + "» no cabe en un importe."
                : "«" + cifras + "» no es un número (como 1.234,56).");
        return {};
    }
}

std::string InterpreteReclamaciones::texto(Columna columna)
{
    auto texto = adodb::sin_apostrofos(campo(columna));
    if (texto != campo(columna))
        m_actual->notas.push_back({ m_fila->numero, std::string(titulos[columna]),
            "el apóstrofo (') se ha cambiado por un acento (´)." });
    if (const auto letras = sql::letras(texto); letras > m_anchos[columna])
        mal(columna,
            "tiene " + std::to_string(letras) + " letras y caben " + std::to_string(m_anchos[columna]) + ".");
    return texto;
}

} // namespace atipicos::app
