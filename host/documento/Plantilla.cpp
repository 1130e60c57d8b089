#include "host/documento/Plantilla.hpp"

#include "host/documento/Plantillas.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

namespace atipicos::orvalin {

namespace {
    constexpr auto nombre_de_serie = "documento_cargo.json";

    /// What is wrong with a template, before it is known which one it is.
    struct Falta {
        std::string que;
    };

    const nlohmann::json& miembro(const nlohmann::json& objeto, const char* nombre)
    {
        if (!objeto.is_object() || !objeto.contains(nombre))
            throw Falta{ std::string("falta «") + nombre + "»" };
        return objeto[nombre];
    }

    double numero(const nlohmann::json& objeto, const char* nombre)
    {
        const auto& valor = miembro(objeto, nombre);
        if (!valor.is_number() || std::abs(valor.get<double>()) > 10'000)
            throw Falta{ std::string("«") + nombre + "» no es una medida" };
        return valor.get<double>();
    }

    Medida medida(const nlohmann::json& objeto, const char* nombre)
    {
        return static_cast<Medida>(std::lround(numero(objeto, nombre) * 100));
    }

    Medida medida_o_cero(const nlohmann::json& objeto, const char* nombre)
    {
        return objeto.contains(nombre) ? medida(objeto, nombre) : 0;
    }

    std::string texto(const nlohmann::json& objeto, const char* nombre)
    {
        const auto& valor = miembro(objeto, nombre);
        if (!valor.is_string())
            throw Falta{ std::string("«") + nombre + "» no es un texto" };
        return valor.get<std::string>();
    }

    const nlohmann::json& lista(const nlohmann::json& objeto, const char* nombre)
    {
        const auto& valor = miembro(objeto, nombre);
        if (!valor.is_array())
            throw Falta{ std::string("«") + nombre + "» no es una lista" };
        return valor;
    }

    Color color(const nlohmann::json& objeto, const char* nombre)
    {
        const auto cifras = texto(objeto, nombre);
        if (cifras.size() != 7 || cifras[0] != '#'
            || cifras.find_first_not_of("0123456789abcdefABCDEF", 1) != std::string::npos)
            throw Falta{ std::string("«") + nombre + "» no es un color como \"#1F3A5F\"" };
        return static_cast<Color>(std::stoul(cifras.substr(1), nullptr, 16));
    }

    class Lector {
    public:
        explicit Lector(const nlohmann::json& raiz)
        {
            const auto familia = texto(raiz, "letra");
            for (const auto& [nombre, uno] : miembro(raiz, "estilos").items()) {
                const auto puntos = numero(uno, "cuerpo");
                if (puntos < 1)
                    throw Falta{ "el cuerpo del estilo «" + nombre + "» es demasiado pequeño" };
                const auto cuerpo = static_cast<Medida>(std::lround(puntos * 2540 / 72));
                m_estilos[nombre] = { { familia, cuerpo, uno.value("negrita", false) },
                    uno.contains("color") ? color(uno, "color") : 0, cuerpo * 13 / 10 };
            }
        }

        [[nodiscard]] std::vector<Pieza> piezas(const nlohmann::json& objeto, const char* nombre) const
        {
            std::vector<Pieza> todas;
            for (const auto& una : lista(objeto, nombre))
                todas.push_back(pieza(una));
            return todas;
        }

        [[nodiscard]] Seccion seccion(const nlohmann::json& una) const
        {
            Seccion leida;
            leida.si = una.contains("si") ? texto(una, "si") : "";
            leida.unida = una.value("unida", false);
            leida.separacion = medida_o_cero(una, "separacion");
            const auto tipo = texto(una, "tipo");
            if (tipo == "tabla")
                lee_tabla(una, leida);
            else if (tipo == "grupo") {
                leida.tipo = Seccion::Tipo::Grupo;
                leida.piezas = piezas(una, "piezas");
            } else if (tipo == "parrafo")
                leida.piezas = { pieza(una) };
            else
                throw Falta{ "no se conoce el tipo «" + tipo + "»" };
            return leida;
        }

    private:
        [[nodiscard]] const Estilo& estilo(const std::string& nombre) const
        {
            const auto lugar = m_estilos.find(nombre);
            if (lugar == m_estilos.end())
                throw Falta{ "no hay ningún estilo «" + nombre + "»" };
            return lugar->second;
        }

        [[nodiscard]] std::vector<ParrafoPlantilla> parrafos(const nlohmann::json& objeto) const
        {
            std::vector<ParrafoPlantilla> todos;
            for (const auto& uno : lista(objeto, "texto")) {
                if (!uno.is_array() || uno.size() != 2 || !uno[0].is_string() || !uno[1].is_string())
                    throw Falta{ "cada elemento de «texto» es un estilo y un texto" };
                todos.push_back({ estilo(uno[0].get<std::string>()), uno[1].get<std::string>() });
            }
            return todos;
        }

        [[nodiscard]] Pieza pieza(const nlohmann::json& una) const
        {
            Pieza leida;
            leida.lugar = { medida(una, "x"), medida_o_cero(una, "y"), medida(una, "ancho"),
                medida_o_cero(una, "alto") };
            leida.a_la_derecha = una.value("derecha", false);
            if (una.contains("relleno"))
                leida.relleno = color(una, "relleno");
            else
                leida.parrafos = parrafos(una);
            return leida;
        }

        void lee_tabla(const nlohmann::json& una, Seccion& leida) const
        {
            leida.tipo = Seccion::Tipo::Tabla;
            leida.lista = texto(una, "filas");
            leida.fondo_titulos = color(una, "fondo_titulos");
            leida.filete = color(una, "filete");
            leida.margen = medida(una, "margen");
            const auto& estilo_titulos = estilo(texto(una, "estilo_titulos"));
            for (const auto& columna : lista(una, "columnas"))
                leida.columnas.push_back({ { estilo_titulos, texto(columna, "titulo") }, pieza(columna) });
            if (leida.columnas.empty())
                throw Falta{ "una tabla no tiene columnas" };
        }

        std::map<std::string, Estilo> m_estilos;
    };

    Plantilla lee(const nlohmann::json& raiz)
    {
        const Lector lector(raiz);
        Plantilla plantilla;
        plantilla.papel = { medida(raiz, "ancho"), medida(raiz, "alto") };
        plantilla.cuerpo_hasta = medida(raiz, "cuerpo_hasta");
        plantilla.separacion = medida(raiz, "separacion");
        plantilla.cabecera = lector.piezas(raiz, "cabecera");
        plantilla.primera = lector.piezas(raiz, "primera");
        plantilla.pie = lector.piezas(raiz, "pie");
        for (const auto& una : lista(raiz, "cuerpo"))
            plantilla.cuerpo.push_back(lector.seccion(una));
        return plantilla;
    }

    std::string linea_y_columna(std::string_view json, std::size_t lugar)
    {
        const auto antes = json.substr(0, lugar == 0 ? 0 : lugar - 1);
        const auto lineas = std::count(antes.begin(), antes.end(), '\n');
        return "línea " + std::to_string(lineas + 1) + ", columna "
            + std::to_string(antes.size() - (antes.rfind('\n') + 1) + 1);
    }

}

Plantilla Plantilla::de_texto(std::string_view json, const std::string& nombre, Donde donde)
{
    const auto falla = [&](const std::string& motivo) {
        return Error(1000, "QVOREMP:Plantilla", "La plantilla «" + nombre + "»: " + motivo + ".", donde);
    };
    try {
        return lee(nlohmann::json::parse(json, nullptr, true, true));
    } catch (const Falta& falta) {
        throw falla(falta.que);
    } catch (const nlohmann::json::parse_error& error) {
        throw falla("no se entiende (" + linea_y_columna(json, error.byte) + ")");
    } catch (const nlohmann::json::exception&) {
        throw falla("un valor no es de la clase que se espera");
    }
}

Plantilla Plantilla::de_fichero(const std::filesystem::path& fichero, Donde donde)
{
    std::ifstream flujo(fichero, std::ios::binary);
    std::ostringstream contenido;
    contenido << flujo.rdbuf();
    if (!flujo || !contenido)
        throw Error(
            1000, "QVOREMP:Plantilla", "No se puede leer la plantilla «" + fichero.string() + "».", donde);
    return de_texto(contenido.str(), fichero.string(), donde);
}

Plantilla Plantilla::de_lugar(const bases::Lugar& lugar, Donde donde)
{
    const auto propia = lugar.carpeta() / nombre_de_serie;
    return lugar.clase() == bases::Lugar::Clase::carpeta && std::filesystem::exists(propia)
        ? de_fichero(propia, donde)
        : de_serie();
}

const Plantilla& Plantilla::de_serie()
{
    static const Plantilla unica = de_texto(plantillas::documento_cargo(), nombre_de_serie);
    return unica;
}

} // namespace atipicos::orvalin
