#include "browser/ColumnasLista.hpp"

#include "runtime/Celdas.hpp"
#include "runtime/Formato.hpp"

#include <array>

namespace atipicos {

namespace {

    using C = CargoListado;
    using enum TipoColumna;

    constexpr auto las_de_la_lista = std::to_array<ColumnaLista>({
        { "Codigo", texto, &C::Codigo, "Código", "Código", "codigo", 1150 },
        { "Cod_Almacen", numero, &C::Cod_Almacen, "Almacén", "Almacén", "almacen", 500 },
        { "Nombre_Almacen", texto, &C::Nombre_Almacen, "Almacén", "Nombre del almacén", "nombre_almacen",
            1800, 20 },
        { "Proveedor", numero, &C::Proveedor, "Proveedor", "Proveedor", "proveedor", 700 },
        { "Nombre_Proveedor", texto, &C::Nombre_Proveedor, "Proveedor", "Nombre del proveedor",
            "nombre_proveedor", 2200, 40 },
        { "Fecha", fecha, &C::Fecha, "Fecha", "Fecha", "fecha", 1250 },
        { "Importe", importe, &C::Importe, "Importe", "Importe", "importe", 1100, 0, true },
        { "Impuesto_Importe", importe, &C::Impuesto_Importe, "Impuesto", "Impuesto", "impuesto", 900, 0,
            true },
        { "Impuesto", porcentaje, &C::Impuesto, "Impuesto", "% impuesto", "porcentaje_impuesto", 850 },
        { "Asiento", numero_o_nada, &C::Asiento, "Asiento", "Asiento", "asiento", 850 },
        { "Usuario", numero, &C::Usuario, "Usuario", "Usuario", "usuario", 450 },
        { "Nombre_Usuario", texto, &C::Nombre_Usuario, "Usuario", "Nombre del usuario", "nombre_usuario",
            1400, 10 },
        { "Observ", texto, &C::Observ, "Observaciones", "Observaciones", "observaciones", 2100, 30 },
    });

    /// Where a value that is read goes to.
    template <class T> T& sitio(CargoListado& cargo, const ColumnaLista& columna)
    {
        const auto* otro = std::get_if<OtroDato>(&columna.dato);
        if (otro == nullptr)
            return cargo.*std::get<T CargoListado::*>(columna.dato);
        if (cargo.otros.size() <= otro->lugar)
            cargo.otros.resize(otro->lugar + 1);
        auto& valor = cargo.otros[otro->lugar];
        return std::holds_alternative<T>(valor) ? std::get<T>(valor) : valor.emplace<T>();
    }

    void lee_campo(const adodb::Field& campo, CargoListado& cargo, const ColumnaLista& columna)
    {
        if (columna.tipo == texto) {
            auto& destino = sitio<std::string>(cargo, columna);
            destino.clear();
            campo.anexa_texto(destino);
            return;
        }
        const Variant valor = campo.Value();
        const bool nulo = valor.es_nulo();
        switch (columna.tipo) {
        case fecha:
            sitio<Date>(cargo, columna) = nulo ? Date() : CDate(valor);
            return;
        case importe:
        case porcentaje:
            sitio<Currency>(cargo, columna) = nulo ? Currency() : CCur(valor);
            return;
        default:
            sitio<std::int32_t>(cargo, columna) = nulo ? 0 : CLng(valor);
        }
    }

}

ColumnasLista columnas_lista() noexcept { return las_de_la_lista; }

void anexa_celda(std::string& destino, const CargoListado& cargo, const ColumnaLista& columna)
{
    switch (columna.tipo) {
    case texto:
        anexa_celda(destino, dato<std::string>(cargo, columna));
        return;
    case numero_o_nada:
        if (dato<std::int32_t>(cargo, columna) <= 0)
            return;
        [[fallthrough]];
    case numero:
        anexa_celda(destino, dato<std::int32_t>(cargo, columna));
        return;
    case fecha:
        dato<Date>(cargo, columna).anexa_texto(destino);
        return;
    case importe:
        anexa_pantalla(destino, dato<Currency>(cargo, columna), 2);
        return;
    case porcentaje:
        anexa_pantalla(destino, dato<Currency>(cargo, columna), 2);
        destino += " %";
    }
}

void anexa_fila(std::string& destino, const CargoListado& cargo, ColumnasLista columnas)
{
    bool primera = true;
    for (const auto& columna : columnas) {
        if (!std::exchange(primera, false))
            destino += '\t';
        anexa_celda(destino, cargo, columna);
    }
}

std::vector<std::string> celdas_lista(const CargoListado& cargo, ColumnasLista columnas)
{
    std::vector<std::string> celdas(columnas.size());
    for (std::size_t i = 0; i < columnas.size(); ++i)
        anexa_celda(celdas[i], cargo, columnas[i]);
    return celdas;
}

LectorLista::LectorLista(adodb::Recordset& rs, ColumnasLista columnas)
{
    m_campos.reserve(columnas.size());
    for (const auto& columna : columnas)
        m_campos.emplace_back(&rs.Fields(columna.campo), &columna);
}

void LectorLista::lee(CargoListado& cargo) const
{
    for (const auto& [campo, columna] : m_campos)
        lee_campo(*campo, cargo, *columna);
}

TotalesLista::TotalesLista(ColumnasLista columnas)
{
    for (const auto& columna : columnas)
        if (columna.se_suma)
            m_sumas.emplace_back(&columna, Currency());
}

void TotalesLista::suma(const CargoListado& cargo)
{
    ++m_cargos;
    for (auto& [columna, total] : m_sumas)
        try {
            if (total)
                *total += dato<Currency>(cargo, *columna);
        } catch (const Error&) {
            total.reset();
        }
}

} // namespace atipicos
