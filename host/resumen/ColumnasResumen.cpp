#include "host/resumen/ColumnasResumen.hpp"

#include "runtime/Formato.hpp"

namespace atipicos::app {

namespace {

    /// Empty for the rest and for the total, which are not one group.
    std::string codigo(const ResumenCargos& resumen, const GrupoResumen& grupo)
    {
        if (grupo.es_resto || &grupo == &resumen.total())
            return {};
        if (resumen.peticion().por != VistaResumen::mes)
            return std::to_string(grupo.clave);
        const auto mes = std::to_string(grupo.clave % 12 + 1);
        return std::to_string(grupo.clave / 12) + (mes.size() == 1 ? "-0" : "-") + mes;
    }

    ValorResumen quizas(std::optional<Currency> valor)
    {
        return valor ? ValorResumen(*valor) : ValorResumen(std::monostate());
    }

    struct EnCelda {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(const std::string& texto) const { return texto; }
        std::string operator()(std::int64_t numero) const { return std::to_string(numero); }
        std::string operator()(Currency importe) const { return texto_pantalla(importe, 2); }
    };

}

std::vector<ColumnaResumen> columnas_resumen(VistaResumen por)
{
    using enum DatoResumen;
    const bool por_mes = por == VistaResumen::mes;
    const char* grupo = por_mes         ? "Nombre"
        : por == VistaResumen::almacen  ? "Almacén"
        : por == VistaResumen::articulo ? "Artículo"
                                        : "Proveedor";
    const bool de_lineas = por == VistaResumen::articulo;
    return {
        { codigo, por_mes ? "Mes" : "Código", por_mes ? "Mes" : "Código", "codigo" },
        { nombre, grupo, grupo, "nombre" },
        { cuantos, de_lineas ? "Líneas" : "Cargos", de_lineas ? "Líneas" : "Cargos",
            de_lineas ? "lineas" : "cargos" },
        { base, "Base", "Base", "base" },
        { impuesto, "Impuesto", "Impuesto", "impuesto" },
        { total, "Total", "Total", "total" },
        { parte, "Parte", "% del total", "porcentaje_del_total" },
        { antes, "Un año antes", "Total un año antes", "total_un_anio_antes" },
        { cambio, "Cambio", "% de cambio", "porcentaje_de_cambio" },
    };
}

ValorResumen valor_de(const ResumenCargos& resumen, const GrupoResumen& grupo, const ColumnaResumen& columna)
{
    switch (columna.dato) {
    case DatoResumen::codigo:
        return codigo(resumen, grupo);
    case DatoResumen::nombre:
        return grupo.nombre;
    case DatoResumen::cuantos:
        return grupo.ahora.cuantos;
    case DatoResumen::base:
        return grupo.ahora.base;
    case DatoResumen::impuesto:
        return grupo.ahora.impuesto;
    case DatoResumen::total:
        return grupo.ahora.total();
    case DatoResumen::parte:
        return quizas(resumen.parte(grupo));
    case DatoResumen::antes:
        return grupo.antes.total();
    case DatoResumen::cambio:
        break;
    }
    return quizas(cambio(grupo));
}

std::string celda_de(const ResumenCargos& resumen, const GrupoResumen& grupo, const ColumnaResumen& columna)
{
    if (columna.dato == DatoResumen::parte)
        return resumen.texto_de_parte(grupo);
    if (columna.dato == DatoResumen::cambio)
        return texto_de_cambio(grupo);
    return std::visit(EnCelda{}, valor_de(resumen, grupo, columna));
}

} // namespace atipicos::app
