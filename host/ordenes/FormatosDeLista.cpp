#include "host/ordenes/FormatosDeLista.hpp"

#include "engines/sql/Fechas.hpp"
#include "host/terminal/Tabla.hpp"
#include "runtime/Formato.hpp"

#include <nlohmann/json.hpp>

#include <ostream>

namespace atipicos::app {

namespace {

    using Json = nlohmann::ordered_json;

    Tabla tabla_de(ColumnasLista columnas)
    {
        std::vector<Tabla::Columna> titulos;
        for (const auto& columna : columnas) {
            const bool a_la_izquierda
                = columna.tipo == TipoColumna::texto || columna.tipo == TipoColumna::fecha;
            titulos.push_back(
                { columna.nombre, a_la_izquierda ? Alineacion::izquierda : Alineacion::derecha });
        }
        return Tabla(std::move(titulos));
    }

    Json json_de(const CargoListado& cargo, const ColumnaLista& columna)
    {
        using enum TipoColumna;
        switch (columna.tipo) {
        case texto:
            return dato<std::string>(cargo, columna);
        case numero_o_nada:
            if (dato<std::int32_t>(cargo, columna) <= 0)
                return nullptr;
            [[fallthrough]];
        case numero:
            return dato<std::int32_t>(cargo, columna);
        case fecha:
            return sql::texto_iso(dato<Date>(cargo, columna));
        case importe:
        case porcentaje:
            return dato<Currency>(cargo, columna).a_double();
        }
        return nullptr;
    }

    void anexa_objeto(std::string& texto, const CargoListado& cargo, ColumnasLista columnas)
    {
        texto += "  {";
        const char* separador = "\n    \"";
        for (const auto& columna : columnas) {
            ((texto += separador) += columna.clave) += "\": ";
            texto += json_de(cargo, columna).dump(-1, ' ', false, Json::error_handler_t::replace);
            separador = ",\n    \"";
        }
        texto += "\n  }";
    }

}

void lista_en_tabla(std::ostream& salida, const OrigenLista& lista, ColumnasLista columnas)
{
    Tabla tabla = tabla_de(columnas);
    TotalesLista totales(columnas);
    lista([&](const CargoListado& cargo) {
        tabla.agrega(celdas_lista(cargo, columnas));
        totales.suma(cargo);
        if (tabla.filas() == filas_por_bloque)
            tabla.vuelca(salida);
    });
    if (totales.cargos() == 0)
        return;
    tabla.vuelca(salida);
    salida << totales.cargos() << " cargos";
    for (const auto& [columna, suma] : totales.sumas())
        salida << ", " << columna->clave << ' ' << (suma ? texto_pantalla(*suma, 2) : "…");
    salida << '\n';
}

void lista_en_json(std::ostream& salida, const OrigenLista& lista, ColumnasLista columnas)
{
    std::string texto = "[";
    lista([&](const CargoListado& cargo) {
        texto += texto == "[" ? "\n" : ",\n";
        anexa_objeto(texto, cargo, columnas);
        salida.write(texto.data(), static_cast<std::streamsize>(texto.size()));
        texto.clear();
    });
    salida << (texto == "[" ? "[]\n" : "\n]\n");
}

} // namespace atipicos::app
