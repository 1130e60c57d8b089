#include "host/reclamaciones/FicheroReclamaciones.hpp"

#include "host/reclamaciones/Huella.hpp"
#include "runtime/Formato.hpp"
#include "runtime/Variant.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace atipicos::app {

namespace {

    enum Columna : std::size_t {
        referencia,
        almacen,
        proveedor,
        fecha,
        observaciones,
        franquiciado,
        articulo,
        descripcion,
        unidades,
        costo,
        observaciones_linea,
        cuantas
    };
    constexpr std::array<std::string_view, cuantas> titulos{ "referencia", "almacen", "proveedor", "fecha",
        "observaciones", "franquiciado", "articulo", "descripcion", "unidades", "costo",
        "observaciones_linea" };

    [[noreturn]] void falla(const std::string& motivo) { throw ErrorDeContenido(motivo); }

    bool es_utf8(std::string_view texto)
    {
        for (std::size_t i = 0; i < texto.size();) {
            const auto byte = [&](std::size_t j) { return static_cast<unsigned char>(texto[j]); };
            const unsigned c = byte(i);
            const std::size_t largo = c < 0x80 ? 1
                : c >= 0xC2 && c < 0xE0        ? 2
                : c >= 0xE0 && c < 0xF0        ? 3
                : c >= 0xF0 && c < 0xF5        ? 4
                                               : 0;
            if (largo == 0 || i + largo > texto.size())
                return false;
            for (std::size_t j = i + 1; j < i + largo; ++j)
                if ((byte(j) & 0xC0U) != 0x80U)
                    return false;
            if (largo >= 3) { // overlong forms, surrogates and what lies beyond Unicode
                const unsigned d = byte(i + 1);
                if ((c == 0xE0 && d < 0xA0) || (c == 0xED && d >= 0xA0) || (c == 0xF0 && d < 0x90)
                    || (c == 0xF4 && d >= 0x90))
                    return false;
            }
            i += largo;
        }
        return true;
    }

    using Orden = std::array<std::size_t, cuantas>; ///< where each column stands

    Orden orden_de(const FilaCsv& cabecera)
    {
        Orden orden{};
        orden.fill(std::string::npos);
        for (std::size_t i = 0; i < cabecera.campos.size(); ++i) {
            const auto& titulo = cabecera.campos[i];
            const auto lugar = std::find(titulos.begin(), titulos.end(), titulo);
            if (lugar == titulos.end())
                falla("fila 1: no se conoce la columna «" + titulo + "».");
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

}

/// Reads one row after the other into charges.
class LectorReclamaciones::Interprete {
public:
    explicit Interprete(const Orden& orden)
        : m_orden(orden)
    {
    }

    /// The charge that begins with a row.
    Reclamacion empieza(const FilaCsv& fila)
    {
        Reclamacion nueva;
        nueva.referencia = campo(fila, referencia);
        nueva.fila = fila.numero;
        comprueba(nueva, fila);
        if (nueva.referencia.empty())
            repara(titulos[referencia], "está vacía; es lo que une las líneas de un cargo.");
        else if (!m_vistas.insert(resumen_de(nueva.referencia)).second)
            repara(titulos[referencia],
                "«" + nueva.referencia + "» ya ha salido antes; sus filas han de ir seguidas.");
        if (m_bien)
            lee_cabecera();
        acaba_fila();
        return nueva;
    }

    /// Whether the row belongs to the charge before it.
    [[nodiscard]] bool continua(const Reclamacion& actual, const FilaCsv& fila) const
    {
        return !actual.referencia.empty() && campo(fila, referencia) == actual.referencia;
    }

    void agrega(Reclamacion& actual, const FilaCsv& fila)
    {
        comprueba(actual, fila);
        repite_cabecera();
        acaba_fila();
    }

private:
    [[nodiscard]] const std::string& campo(const FilaCsv& fila, Columna columna) const
    {
        static const std::string ninguno;
        const auto lugar = m_orden[columna];
        return lugar < fila.campos.size() ? fila.campos[lugar] : ninguno;
    }
    [[nodiscard]] const std::string& campo(Columna columna) const { return campo(*m_fila, columna); }

    void repara(std::string_view columna, const std::string& motivo)
    {
        m_actual->errores.push_back({ m_fila->numero, std::string(columna), motivo });
        m_bien = false;
    }

    /// Looks at a row as a whole before it is read into its charge.
    void comprueba(Reclamacion& actual, const FilaCsv& fila)
    {
        m_actual = &actual;
        m_fila = &fila;
        m_bien = true;
        if (fila.campos.size() != cuantas)
            repara("",
                "tiene " + std::to_string(fila.campos.size()) + " campos y se esperaban "
                    + std::to_string(+cuantas) + ".");
        if (fila.campos.size() <= cuantas)
            comprueba_letras();
    }

    void acaba_fila()
    {
        if (m_bien)
            lee_linea();
        m_actual->valida = m_actual->valida && m_bien;
    }

    void comprueba_letras()
    {
        for (std::size_t i = 0; i < cuantas; ++i) {
            const auto& texto = campo(static_cast<Columna>(i));
            if (texto.find('\0') != std::string::npos)
                repara(titulos[i], "contiene un carácter nulo.");
            else if (!es_utf8(texto))
                repara(titulos[i], "no está en UTF-8; guarde el fichero con esa codificación.");
        }
    }

    void lee_cabecera()
    {
        auto& nueva = *m_actual;
        m_cabecera.clear();
        for (const auto columna : { almacen, proveedor, fecha, observaciones, franquiciado })
            m_cabecera.push_back(campo(columna));
        nueva.almacen = static_cast<std::int16_t>(codigo(almacen, 32'767, true));
        nueva.proveedor = codigo(proveedor, 2'147'483'647, true);
        if (const auto leida = Date::de_texto(campo(fecha)))
            nueva.fecha = *leida;
        else
            repara(titulos[fecha], "«" + campo(fecha) + "» no es una fecha (dd/mm/aaaa).");
        nueva.observaciones = texto(observaciones);
        const auto& letra = campo(franquiciado);
        nueva.franquiciado = letra == "S" || letra == "s";
        if (!nueva.franquiciado && !letra.empty() && letra != "N" && letra != "n")
            repara(titulos[franquiciado], "«" + letra + "» ha de ser S o N.");
    }

    void repite_cabecera()
    {
        std::size_t i = 0;
        for (const auto columna : { almacen, proveedor, fecha, observaciones, franquiciado }) {
            if (i < m_cabecera.size() && !campo(columna).empty() && campo(columna) != m_cabecera[i])
                repara(titulos[columna],
                    "«" + campo(columna) + "» no es lo que dice la primera fila de «" + m_actual->referencia
                        + "» («" + m_cabecera[i] + "»).");
            ++i;
        }
    }

    void lee_linea()
    {
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
    std::int32_t codigo(Columna columna, std::int32_t maximo, bool obligatorio)
    {
        const auto& cifras = campo(columna);
        if (cifras.empty() && !obligatorio)
            return 0;
        const bool son_cifras
            = !cifras.empty() && cifras.find_first_not_of("0123456789") == std::string::npos;
        const double valor = son_cifras && cifras.size() <= 12 ? Val(cifras) : 0;
        if (valor < 1 || valor > maximo) {
            repara(titulos[columna],
                "«" + cifras + "» no es un código (un número de 1 a " + std::to_string(maximo) + ").");
            return 0;
        }
        return static_cast<std::int32_t>(valor);
    }

    Currency importe(Columna columna)
    {
        const auto& cifras = campo(columna);
        const auto coma = cifras.find(',');
        if (coma != std::string::npos && cifras.find_last_not_of(' ') - coma > 4) {
            repara(titulos[columna], "«" + cifras + "» tiene más de cuatro decimales.");
            return {};
        }
        try {
            return lee_pantalla(cifras);
        } catch (const Error& error) {
            repara(titulos[columna],
                error.numero() == numero_error::desbordamiento
                    ? "«" + cifras + "» no cabe en un importe."
                    : "«" + cifras + "» no es un número (como 1.234,56).");
            return {};
        }
    }

    std::string texto(Columna columna)
    {
        std::string resultado_texto;
        for (const char c : campo(columna))
            resultado_texto += c == '\'' ? std::string("´") : std::string(1, c);
        if (resultado_texto != campo(columna))
            m_actual->notas.push_back({ m_fila->numero, std::string(titulos[columna]),
                "el apóstrofo (') se ha cambiado por un acento (´)." });
        return resultado_texto;
    }

    Orden m_orden;
    Reclamacion* m_actual = nullptr;
    const FilaCsv* m_fila = nullptr;
    bool m_bien = true; ///< the row
    std::unordered_set<Resumen, DispersaResumen> m_vistas;
    std::vector<std::string> m_cabecera; ///< header values of the charge being read, as written
};

LectorReclamaciones::LectorReclamaciones(Trozos trozos)
    : m_csv(std::move(trozos))
{
    if (!m_csv.lee(m_fila))
        falla("el fichero está vacío.");
    m_interprete = std::make_unique<Interprete>(orden_de(m_fila));
    m_hay_fila = m_csv.lee(m_fila);
}

LectorReclamaciones::~LectorReclamaciones() = default;

std::optional<Reclamacion> LectorReclamaciones::siguiente()
{
    if (!m_hay_fila)
        return std::nullopt;
    Reclamacion una = m_interprete->empieza(m_fila);
    while ((m_hay_fila = m_csv.lee(m_fila)) && m_interprete->continua(una, m_fila))
        m_interprete->agrega(una, m_fila);
    return una;
}

} // namespace atipicos::app
