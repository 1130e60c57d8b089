#include "host/resumen/ResumenEnFichero.hpp"

#include "browser/LibroXlsx.hpp"
#include "host/resumen/ColumnasResumen.hpp"
#include "runtime/Celdas.hpp"
#include "runtime/Error.hpp"
#include "runtime/Formato.hpp"

#include <nlohmann/json.hpp>

#include <ostream>

namespace atipicos::app {

namespace {

    using Json = nlohmann::ordered_json;

    struct EnJson {
        Json operator()(std::monostate) const { return nullptr; }
        Json operator()(const std::string& texto) const { return texto; }
        Json operator()(std::int64_t numero) const { return numero; }
        Json operator()(Currency importe) const { return importe.a_double(); } // written shortest: exact
    };

    Json objeto(
        const ResumenCargos& resumen, const GrupoResumen& grupo, const std::vector<ColumnaResumen>& columnas)
    {
        Json json = Json::object();
        for (const auto& columna : columnas)
            json[columna.clave] = std::visit(EnJson{}, valor_de(resumen, grupo, columna));
        return json;
    }

    std::string fecha_iso(Date fecha)
    {
        const auto texto = fecha.texto();
        return texto.substr(6) + '-' + texto.substr(3, 2) + '-' + texto.substr(0, 2);
    }

    struct EnCsv {
        const ColumnaResumen& columna;

        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(const std::string& texto) const { return texto; }
        std::string operator()(std::int64_t numero) const { return std::to_string(numero); }
        std::string operator()(Currency valor) const
        {
            const bool es_tanto = columna.dato == DatoResumen::parte || columna.dato == DatoResumen::cambio;
            return texto_pantalla(valor, es_tanto ? 4 : 2);
        }
    };

    void escribe_celda(LibroXlsx& libro, std::size_t lugar, const ValorResumen& valor)
    {
        if (const auto* texto = std::get_if<std::string>(&valor)) {
            if (!libro.texto(lugar, *texto))
                throw Error(1, "atipicos", "Un nombre no cabe en una celda (32.767 letras): use csv.");
        } else if (const auto* importe = std::get_if<Currency>(&valor)) {
            libro.numero(lugar, importe->a_double(), LibroXlsx::Formato::importe);
        } else if (const auto* numero = std::get_if<std::int64_t>(&valor)) {
            libro.numero(lugar, static_cast<double>(*numero));
        }
    }

}

void resumen_en_csv(std::ostream& salida, const ResumenCargos& resumen)
{
    const auto columnas = columnas_resumen(resumen.peticion().por);
    std::string linea;
    for (const auto& columna : columnas)
        (linea += linea.empty() ? "" : ";") += columna.nombre;
    linea += "\r\n";
    for (const auto& grupo : resumen.grupos()) {
        const char* separador = "";
        for (const auto& columna : columnas) {
            linea += separador;
            anexa_campo_csv(linea, std::visit(EnCsv{ columna }, valor_de(resumen, grupo, columna)));
            separador = ";";
        }
        linea += "\r\n";
    }
    salida << linea;
}

void resumen_en_json(std::ostream& salida, const ResumenCargos& resumen)
{
    const auto& peticion = resumen.peticion();
    const auto columnas = columnas_resumen(peticion.por);
    const auto antes = un_anio_antes(peticion.periodo);
    Json json;
    json["por"] = palabra(peticion.por);
    json["desde"] = fecha_iso(peticion.periodo.desde);
    json["hasta"] = fecha_iso(peticion.periodo.hasta);
    json["desde_un_anio_antes"] = fecha_iso(antes.desde);
    json["hasta_un_anio_antes"] = fecha_iso(antes.hasta);
    json["almacen"] = peticion.almacen > 0 ? Json(peticion.almacen) : Json();
    json["proveedor"] = peticion.proveedor > 0 ? Json(peticion.proveedor) : Json();
    json["grupos"] = Json::array();
    for (const auto& grupo : resumen.grupos())
        json["grupos"].push_back(objeto(resumen, grupo, columnas));
    json["total"] = objeto(resumen, resumen.total(), columnas);
    json["total"].erase("codigo");
    json["total"].erase("nombre");
    salida << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void resumen_en_xlsx(std::ostream& salida, const ResumenCargos& resumen)
{
    const auto columnas = columnas_resumen(resumen.peticion().por);
    std::vector<std::string> titulos;
    titulos.reserve(columnas.size());
    for (const auto& columna : columnas)
        titulos.emplace_back(columna.nombre);
    LibroXlsx libro(salida, "Resumen", titulos);
    for (const auto& grupo : resumen.grupos()) {
        if (!libro.empieza_fila())
            throw Error(1, "atipicos", "El resumen no cabe en una hoja (1.048.576 filas): use csv.");
        for (std::size_t i = 0; i < columnas.size(); ++i)
            escribe_celda(libro, i, valor_de(resumen, grupo, columnas[i]));
    }
    libro.termina();
}

} // namespace atipicos::app
