#include "browser/ListaAtipicos.hpp"

#include "context/modComun.hpp"
#include "runtime/Celdas.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>

namespace atipicos {

namespace {

    /// The fields of the list, found by name once and read row by row.
    class Lector {
    public:
        explicit Lector(adodb::Recordset& rs)
            : m_codigo(rs.Fields("Codigo"))
            , m_almacen(rs.Fields("Cod_Almacen"))
            , m_nombre_almacen(rs.Fields("Nombre_Almacen"))
            , m_proveedor(rs.Fields("Proveedor"))
            , m_nombre_proveedor(rs.Fields("Nombre_Proveedor"))
            , m_fecha(rs.Fields("Fecha"))
            , m_importe(rs.Fields("Importe"))
            , m_impuesto_importe(rs.Fields("Impuesto_Importe"))
            , m_impuesto(rs.Fields("Impuesto"))
            , m_asiento(rs.Fields("Asiento"))
            , m_usuario(rs.Fields("Usuario"))
            , m_nombre_usuario(rs.Fields("Nombre_Usuario"))
            , m_observ(rs.Fields("Observ"))
        {
        }

        void lee(CargoListado& cargo) const
        {
            texto(m_codigo, cargo.Codigo);
            cargo.Cod_Almacen = entero(m_almacen);
            texto(m_nombre_almacen, cargo.Nombre_Almacen);
            cargo.Proveedor = entero(m_proveedor);
            texto(m_nombre_proveedor, cargo.Nombre_Proveedor);
            const Variant fecha = m_fecha.Value();
            cargo.Fecha = fecha.es_nulo() ? Date() : CDate(fecha);
            cargo.Importe = importe(m_importe);
            cargo.Impuesto_Importe = importe(m_impuesto_importe);
            cargo.Impuesto = importe(m_impuesto);
            cargo.Asiento = entero(m_asiento);
            cargo.Usuario = entero(m_usuario);
            texto(m_nombre_usuario, cargo.Nombre_Usuario);
            texto(m_observ, cargo.Observ);
        }

    private:
        static void texto(const adodb::Field& campo, std::string& destino)
        {
            destino.clear();
            campo.anexa_texto(destino);
        }

        static std::int32_t entero(const adodb::Field& campo)
        {
            const Variant valor = campo.Value();
            return valor.es_nulo() ? 0 : CLng(valor);
        }

        static Currency importe(const adodb::Field& campo)
        {
            const Variant valor = campo.Value();
            return valor.es_nulo() ? Currency() : CCur(valor);
        }

        const adodb::Field& m_codigo;
        const adodb::Field& m_almacen;
        const adodb::Field& m_nombre_almacen;
        const adodb::Field& m_proveedor;
        const adodb::Field& m_nombre_proveedor;
        const adodb::Field& m_fecha;
        const adodb::Field& m_importe;
        const adodb::Field& m_impuesto_importe;
        const adodb::Field& m_impuesto;
        const adodb::Field& m_asiento;
        const adodb::Field& m_usuario;
        const adodb::Field& m_nombre_usuario;
        const adodb::Field& m_observ;
    };

}

std::string instruccion_lista(
    const FiltroAtipicos& filtro, std::int16_t empresa, std::int16_t empresa_proveedores)
{
    std::string almacen;
    if (filtro.Almacen >= 1)
        almacen = " AND pc.Cod_Almacen =" + std::to_string(filtro.Almacen);
    std::string proveedor;
    if (filtro.Proveedor >= 1)
        proveedor = " AND pc.Proveedor =" + std::to_string(filtro.Proveedor);

    return "SELECT pc.* ,"
           " ISNULL(prov.Nombre ,'') as Nombre_Proveedor , ISNULL(alm.Nombre ,'') as Nombre_Almacen, "
           " ISNULL(usu.Nombre, '') AS Nombre_Usuario"
           " FROM Proveedores_Cargos_Atipicos pc"
           " LEFT JOIN Almacenes alm ON alm.Cod_Empresa = pc.Cod_Empresa AND alm.Codigo = pc.Cod_Almacen"
           " LEFT JOIN Proveedores prov ON prov.Cod_Empresa ="
        + std::to_string(empresa_proveedores)
        + " AND prov.Codigo = pc.Proveedor"
          " LEFT JOIN SGD_Usuarios usu ON usu.Codigo = pc.Usuario"
          " WHERE pc.Cod_Empresa ="
        + std::to_string(empresa) + almacen + proveedor + " AND pc.Fecha BETWEEN '" + filtro.FechaI
        + "' AND '" + filtro.FechaF + "'" + " ORDER BY pc.Fecha DESC, pc.Cod_Almacen ASC, pc.Codigo DESC";
}

void anexa_fila(std::string& destino, const CargoListado& cargo)
{
    anexa_celda(destino, cargo.Codigo);
    destino += '\t';
    anexa_celda(destino, cargo.Cod_Almacen);
    destino += '\t';
    anexa_celda(destino, cargo.Nombre_Almacen);
    destino += '\t';
    anexa_celda(destino, cargo.Proveedor);
    destino += '\t';
    anexa_celda(destino, cargo.Nombre_Proveedor);
    destino += '\t';
    cargo.Fecha.anexa_texto(destino);
    destino += '\t';
    anexa_pantalla(destino, cargo.Importe, 2);
    destino += '\t';
    anexa_pantalla(destino, cargo.Impuesto_Importe, 2);
    destino += '\t';
    anexa_pantalla(destino, cargo.Impuesto, 2);
    destino += " %\t";
    if (cargo.Asiento > 0)
        anexa_celda(destino, cargo.Asiento);
    destino += '\t';
    anexa_celda(destino, cargo.Usuario);
    destino += '\t';
    anexa_celda(destino, cargo.Nombre_Usuario);
    destino += '\t';
    anexa_celda(destino, cargo.Observ);
}

CargoListado cargo_de_fila(std::string_view fila)
{
    const auto texto = [&] {
        const auto celda = fila.substr(0, fila.find('\t'));
        fila.remove_prefix(std::min(celda.size() + 1, fila.size()));
        return celda;
    };
    const auto entero = [&] {
        const auto celda = texto();
        return celda.empty() ? 0 : CLng(std::string(celda));
    };
    const auto importe = [&] {
        const auto celda = texto();
        return lee_pantalla(celda.substr(0, celda.find(" %")));
    };
    CargoListado cargo; // cell by cell, in the order of the row
    cargo.Codigo = texto();
    cargo.Cod_Almacen = entero();
    cargo.Nombre_Almacen = texto();
    cargo.Proveedor = entero();
    cargo.Nombre_Proveedor = texto();
    cargo.Fecha = Date::de_texto(texto()).value_or(Date{});
    cargo.Importe = importe();
    cargo.Impuesto_Importe = importe();
    cargo.Impuesto = importe();
    cargo.Asiento = entero();
    cargo.Usuario = entero();
    cargo.Nombre_Usuario = texto();
    cargo.Observ = texto();
    return cargo;
}

void Cargar_Atipicos(const FiltroAtipicos& filtro, const std::function<void(const CargoListado&)>& cada)
{
    auto& empresa = modComun::EmpresaOrvalin();
    auto rs = modComun::ConexionOrvalin().CreateRecordset();
    rs->Open(instruccion_lista(filtro, empresa.Codigo(), empresa.EmpresaProveedores()),
        adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
    const Lector lector(*rs);
    CargoListado cargo;
    for (; !rs->Eof(); rs->MoveNext()) {
        lector.lee(cargo);
        cada(cargo);
    }
    rs->Close();
}

} // namespace atipicos
