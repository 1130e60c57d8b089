#include "host/app/FicheroReclamaciones.hpp"

#include "host/app/LectorCsv.hpp"
#include "host/app/Ordenes.hpp"
#include "runtime/Formato.hpp"
#include "runtime/MotivoSistema.hpp"
#include "runtime/Variant.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>
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

    [[noreturn]] void falla(const std::string& motivo) { throw Error(no_hecho, "atipicos", motivo); }

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

    /// Reads one row after the other into charges.
    class Interprete {
    public:
        explicit Interprete(const Orden& orden)
            : m_orden(orden)
        {
        }

        void lee(const FilaCsv& fila)
        {
            m_fila = &fila;
            m_bien = true;
            if (fila.campos.size() != cuantas)
                repara("",
                    "tiene " + std::to_string(fila.campos.size()) + " campos y se esperaban "
                        + std::to_string(+cuantas) + ".");
            const bool comprobada = fila.campos.size() <= cuantas;
            if (comprobada)
                comprueba_letras();
            const std::string nombre
                = fila.campos.size() > m_orden[referencia] ? campo(referencia) : std::string();
            auto& actual = reclamacion(nombre);
            if (m_bien)
                lee_linea(actual);
            actual.valida = actual.valida && m_bien;
        }

        Reclamaciones resultado;

    private:
        [[nodiscard]] const std::string& campo(Columna columna) const
        {
            static const std::string ninguno;
            const auto lugar = m_orden[columna];
            return lugar < m_fila->campos.size() ? m_fila->campos[lugar] : ninguno;
        }

        void repara(std::string_view columna, const std::string& motivo)
        {
            resultado.errores.push_back({ m_fila->numero, std::string(columna), motivo });
            m_bien = false;
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

        Reclamacion& reclamacion(const std::string& nombre)
        {
            auto& todas = resultado.todas;
            if (!todas.empty() && todas.back().referencia == nombre && !nombre.empty()) {
                repite_cabecera(todas.back());
                return todas.back();
            }
            auto& nueva = todas.emplace_back();
            nueva.referencia = nombre;
            nueva.fila = m_fila->numero;
            if (nombre.empty())
                repara(titulos[referencia], "está vacía; es lo que une las líneas de un cargo.");
            else if (!m_vistas.insert(nombre).second)
                repara(titulos[referencia],
                    "«" + nombre + "» ya ha salido antes; sus filas han de ir seguidas.");
            if (m_bien)
                lee_cabecera(nueva);
            return nueva;
        }

        void lee_cabecera(Reclamacion& nueva)
        {
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

        void repite_cabecera(const Reclamacion& actual)
        {
            std::size_t i = 0;
            for (const auto columna : { almacen, proveedor, fecha, observaciones, franquiciado }) {
                if (i < m_cabecera.size() && !campo(columna).empty() && campo(columna) != m_cabecera[i])
                    repara(titulos[columna],
                        "«" + campo(columna) + "» no es lo que dice la primera fila de «" + actual.referencia
                            + "» («" + m_cabecera[i] + "»).");
                ++i;
            }
        }

        void lee_linea(Reclamacion& actual)
        {
            LineaReclamada linea;
            linea.fila = m_fila->numero;
            linea.articulo = codigo(articulo, 2'147'483'647, false);
            linea.descripcion = texto(descripcion);
            linea.unidades = importe(unidades);
            linea.costo = importe(costo);
            linea.observaciones = texto(observaciones_linea);
            actual.lineas.push_back(std::move(linea));
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
                resultado.notas.push_back({ m_fila->numero, std::string(titulos[columna]),
                    "el apóstrofo (') se ha cambiado por un acento (´)." });
            return resultado_texto;
        }

        const Orden& m_orden;
        const FilaCsv* m_fila = nullptr;
        bool m_bien = true;
        std::set<std::string> m_vistas;
        std::vector<std::string> m_cabecera; ///< header values of the charge being read, as written
    };

}

std::string lee_fichero(const std::filesystem::path& fichero)
{
    const auto nombre = "«" + fichero.string() + "»";
    std::error_code da_igual; // what cannot be looked at cannot be opened either, and that says why
    if (std::filesystem::is_directory(fichero, da_igual))
        falla(nombre + " es una carpeta, no un fichero.");
    std::ifstream flujo(fichero, std::ios::binary);
    if (!flujo)
        falla("No se puede leer " + nombre + ": " + motivo_sistema(errno) + ".");
    std::ostringstream contenido;
    contenido << flujo.rdbuf();
    if (flujo.bad())
        falla("No se pudo leer entero " + nombre + ": " + motivo_sistema(errno) + ".");
    return contenido.str();
}

Reclamaciones lee_reclamaciones(std::string_view contenido)
{
    if (contenido.starts_with("\xEF\xBB\xBF"))
        contenido.remove_prefix(3);
    const auto filas = lee_csv(contenido);
    if (filas.empty())
        falla("el fichero está vacío.");
    const auto orden = orden_de(filas.front());
    Interprete interprete(orden);
    for (std::size_t i = 1; i < filas.size(); ++i)
        interprete.lee(filas[i]);
    return std::move(interprete.resultado);
}

} // namespace atipicos::app
