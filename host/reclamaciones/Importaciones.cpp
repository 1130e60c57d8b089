#include "host/reclamaciones/Importaciones.hpp"

#include "editor/GuardarAtipico.hpp"
#include "host/comprobacion/CargoConsultado.hpp"
#include "host/sesion/OpcionesComunes.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <algorithm>
#include <utility>

namespace atipicos::app {

namespace {

    /// Whether the charge, as it is stored, could be of that claim.
    bool es_su_cargo(const ClaveCargo& clave, const CargoTecleado& tecleado)
    {
        const auto cargo = busca_cargo(clave);
        return !cargo
            || (clave.Almacen == tecleado.Almacen && cargo->cabecera.Proveedor == tecleado.Proveedor
                && cargo->cabecera.Fecha.solo_dia() == tecleado.Fecha.solo_dia()
                && cargo->cabecera.Importe == tecleado.Total);
    }

}

Importaciones::Importaciones(
    std::shared_ptr<adodb::Connection> conexion, std::int16_t empresa, std::string huella)
    : m_conexion(std::move(conexion))
    , m_empresa(empresa)
    , m_huella(std::move(huella))
{
}

std::map<std::string, std::vector<Importada>> Importaciones::busca(
    const std::vector<std::string>& referencias) const
{
    std::map<std::string, std::vector<Importada>> todas;
    if (referencias.empty())
        return todas;
    std::string lista;
    for (const auto& una : referencias)
        lista += (lista.empty() ? "" : ", ") + sql::literal(una);
    const auto rs = m_conexion->CreateRecordset();
    rs->Open(
        "SELECT Referencia, Vez, Cod_Ejercicio, Cod_Almacen, Codigo, Huella, Contenido FROM Importaciones"
        " WHERE Cod_Empresa ="
            + std::to_string(m_empresa) + " AND Referencia IN (" + lista + ") ORDER BY Referencia, Vez",
        adodb::CursorType::Static, adodb::LockType::ReadOnly);
    for (; !rs->Eof(); rs->MoveNext())
        todas[adodb::texto(*rs, "Referencia")].push_back({ adodb::entero(*rs, "Vez"),
            { adodb::entero(*rs, "Cod_Ejercicio"), adodb::entero(*rs, "Cod_Almacen"),
                adodb::texto(*rs, "Codigo") },
            adodb::texto(*rs, "Huella"), adodb::texto(*rs, "Contenido") });
    return todas;
}

std::vector<Importada> Importaciones::busca(const std::string& referencia) const
{
    auto todas = busca(std::vector{ referencia });
    return todas.empty() ? std::vector<Importada>() : std::move(todas.begin()->second);
}

const Importada* Importaciones::la_misma(
    const std::vector<Importada>& veces, const Reclamada& reclamada) const
{
    const auto una = std::find_if(veces.rbegin(), veces.rend(), [&](const Importada& vez) {
        if (!vez.contenido.empty())
            return vez.contenido == reclamada.contenido;
        return vez.huella == m_huella || es_su_cargo(vez.clave, reclamada.tecleado);
    });
    return una == veces.rend() ? nullptr : &*una;
}

void Importaciones::anota(adodb::Connection& conexion, const std::string& referencia,
    const std::string& contenido, std::int16_t vez, const ClaveCargo& clave) const
{
    try {
        conexion.Execute("INSERT INTO Importaciones (Huella, Referencia, Vez, Cod_Empresa, Cod_Ejercicio, "
                         "Cod_Almacen, Codigo, Contenido) VALUES ("
            + sql::literal(m_huella) + ", " + sql::literal(referencia) + ", " + std::to_string(vez) + ", "
            + std::to_string(m_empresa) + ", " + std::to_string(clave.Ejercicio) + ", "
            + std::to_string(clave.Almacen) + ", " + sql::literal(clave.Codigo) + ", "
            + sql::literal(contenido) + ")");
    } catch (const adodb::ErrorBaseDatos& error) {
        if (error.categoria() != adodb::Categoria::restriccion)
            throw;
        const auto veces = busca(referencia); // the key guards it, so that only a conflict costs a look
        if (veces.empty() || veces.back().vez < vez)
            throw;
        throw Error(no_hecho, "atipicos",
            "Otro proceso acaba de registrar «" + referencia + "» como " + veces.back().clave.Codigo + ".");
    }
}

} // namespace atipicos::app
