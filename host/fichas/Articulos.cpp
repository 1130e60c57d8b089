#include "host/fichas/Articulos.hpp"

#include "host/fichas/CuentasDeFicha.hpp"
#include "platform/adodb/campos.hpp"

#include <utility>

namespace atipicos::app {

namespace {

    constexpr auto tabla_de_articulos = "Articulos";

}

Articulos::Articulos(AmbitoDeFichas ambito)
    : m_ambito(std::move(ambito))
{
}

std::string Articulos::clave(std::int32_t codigo) const
{
    return " WHERE Cod_Empresa =" + std::to_string(m_ambito.empresa)
        + " AND Codigo =" + std::to_string(codigo);
}

std::vector<FichaDeArticulo> Articulos::lee_donde(const std::string& condicion) const
{
    std::vector<FichaDeArticulo> leidos;
    for (const auto rs = adodb::consulta(*m_ambito.bases.orvalin,
             "SELECT Codigo, Nombre, CtaIngresosAtipicos FROM Articulos" + condicion + " ORDER BY Codigo");
         !rs->Eof(); rs->MoveNext())
        leidos.push_back({ CLng(rs->Fields("Codigo").Value()), adodb::texto(*rs, "Nombre"),
            adodb::texto(*rs, "CtaIngresosAtipicos") });
    return leidos;
}

std::vector<FichaDeArticulo> Articulos::todos() const
{
    return lee_donde(" WHERE Cod_Empresa =" + std::to_string(m_ambito.empresa));
}

std::optional<FichaDeArticulo> Articulos::lee(std::int32_t codigo) const
{
    auto leidos = lee_donde(clave(codigo));
    if (leidos.empty())
        return std::nullopt;
    return std::move(leidos.front());
}

std::int32_t Articulos::libre() const
{
    return codigo_libre(*m_ambito.bases.orvalin, tabla_de_articulos, m_ambito.empresa);
}

bool Articulos::guarda(const FichaDeArticulo& ficha) const
{
    if (ficha.codigo < 1)
        rehusa_ficha("El código de un artículo es un número mayor que cero.");
    exige_que_quepa(ficha.nombre, { tabla_de_articulos, "Nombre", "el nombre", true });
    exige_que_quepa(
        ficha.cuenta_ingresos, { tabla_de_articulos, "CtaIngresosAtipicos", "la cuenta de ingresos" });
    if (!ficha.cuenta_ingresos.empty() && !hay_cuenta(m_ambito, ficha.cuenta_ingresos))
        rehusa_ficha("No existe la cuenta " + ficha.cuenta_ingresos
            + " en Contabilidad: deje la del almacén, o créela allí antes.");
    bool nuevo = false;
    en_una_transaccion(m_ambito.bases, [&] {
        nuevo = !lee(ficha.codigo);
        auto& orvalin = *m_ambito.bases.orvalin;
        if (nuevo)
            orvalin.Execute(
                "INSERT INTO Articulos (Cod_Empresa, Codigo, Nombre, CtaIngresosAtipicos) VALUES ("
                + std::to_string(m_ambito.empresa) + ", " + std::to_string(ficha.codigo) + ", "
                + en_instruccion(ficha.nombre) + ", " + en_instruccion(ficha.cuenta_ingresos) + ")");
        else
            orvalin.Execute("UPDATE Articulos SET Nombre =" + en_instruccion(ficha.nombre)
                + ", CtaIngresosAtipicos =" + en_instruccion(ficha.cuenta_ingresos) + clave(ficha.codigo));
    });
    return nuevo;
}

void Articulos::elimina(std::int32_t codigo) const
{
    en_una_transaccion(m_ambito.bases, [&] {
        auto& orvalin = *m_ambito.bases.orvalin;
        if (!lee(codigo))
            rehusa_ficha("No existe el artículo " + std::to_string(codigo) + ".");
        const auto rs = adodb::consulta(orvalin,
            "SELECT MIN(Codigo) AS Cargo FROM Proveedores_Cargos_Atipicos_Lineas WHERE Cod_Empresa ="
                + std::to_string(m_ambito.empresa) + " AND Cod_Articulo =" + std::to_string(codigo));
        if (const auto cargo = adodb::texto(*rs, "Cargo"); !cargo.empty())
            rehusa_ficha("No se puede eliminar el artículo " + std::to_string(codigo)
                + ": hay cargos con él, como el " + cargo + ".");
        orvalin.Execute("DELETE FROM Articulos" + clave(codigo));
    });
}

} // namespace atipicos::app
