#include "host/documento/CargoImpreso.hpp"

#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <memory>

namespace atipicos::orvalin {

namespace {

    /// One query after the other on the same connection, for the same caller.
    class Lectura {
    public:
        Lectura(adodb::Connection& conexion, Donde donde)
            : m_conexion(conexion)
            , m_donde(donde)
        {
        }

        [[nodiscard]] bool abre(const std::string& sql)
        {
            m_rs = m_conexion.CreateRecordset();
            m_rs->Open(sql, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly,
                adodb::CommandType::Text, m_donde);
            return !m_rs->Eof();
        }
        [[nodiscard]] bool siguiente()
        {
            m_rs->MoveNext(m_donde);
            return !m_rs->Eof();
        }

        [[nodiscard]] std::string texto(const char* campo) { return adodb::texto(*m_rs, campo, m_donde); }
        [[nodiscard]] std::int32_t largo(const char* campo) { return CLng(valor(campo), m_donde); }
        [[nodiscard]] Currency importe(const char* campo) { return CCur(valor(campo), m_donde); }
        [[nodiscard]] Date fecha(const char* campo) { return CDate(valor(campo), m_donde); }

    private:
        [[nodiscard]] Variant valor(const char* campo) { return m_rs->Fields(campo, m_donde).Value(m_donde); }

        adodb::Connection& m_conexion;
        std::unique_ptr<adodb::Recordset> m_rs;
        Donde m_donde;
    };

    void lee_emisor(CargoImpreso& cargo, Lectura& lectura, std::int16_t empresa)
    {
        if (!lectura.abre("SELECT Nombre, NIF, Domicilio, CodigoPostal, Poblacion, Provincia FROM Empresas "
                          "WHERE Codigo ="
                + std::to_string(empresa)))
            return;
        cargo.emisor = { lectura.texto("Nombre"), lectura.texto("NIF"), lectura.texto("Domicilio"),
            lectura.texto("CodigoPostal"), lectura.texto("Poblacion"), lectura.texto("Provincia") };
    }

    void lee_lineas(CargoImpreso& cargo, Lectura& lectura, const std::string& clave)
    {
        for (bool hay = lectura.abre("SELECT Cod_Articulo, Descripcion, Unidades, Precio, Observ"
                                     " FROM Proveedores_Cargos_Atipicos_Lineas WHERE "
                 + clave + " ORDER BY Num_Linea");
             hay; hay = lectura.siguiente())
            cargo.lineas.push_back({ lectura.largo("Cod_Articulo"), lectura.texto("Descripcion"),
                lectura.importe("Unidades"), lectura.importe("Precio"), lectura.texto("Observ") });
    }

    std::string clave_de(const qvoremp::Empresa& empresa, std::int16_t ejercicio, std::int16_t almacen,
        const std::string& codigo, Donde donde)
    {
        return "Cod_Empresa =" + std::to_string(empresa.Codigo(donde))
            + " AND Cod_Ejercicio =" + std::to_string(ejercicio)
            + " AND Cod_Almacen =" + std::to_string(almacen) + " AND Codigo =" + sql::literal(codigo, donde);
    }

    std::vector<PrevisionImpresa> previsiones_del_asiento(
        Lectura& lectura, std::int32_t empresa_contable, int ejercicio, std::int32_t asiento)
    {
        std::vector<PrevisionImpresa> previsiones;
        if (asiento <= 0)
            return previsiones;
        for (bool hay = lectura.abre(
                 "SELECT p.Numero, p.Vencimiento, p.Importe, ISNULL(d.Nombre, '') AS Documento"
                 " FROM Bexmor.dbo.Previsiones p LEFT JOIN Bexmor.dbo.Tipos_Doc d ON d.Codigo = p.TipoDoc"
                 " WHERE p.Cod_Empresa ="
                 + std::to_string(empresa_contable) + " AND p.Cod_Ejercicio =" + std::to_string(ejercicio)
                 + " AND p.Asiento =" + std::to_string(asiento) + " ORDER BY p.Numero");
             hay; hay = lectura.siguiente())
            previsiones.push_back({ lectura.largo("Numero"), lectura.fecha("Vencimiento"),
                lectura.texto("Documento"), lectura.importe("Importe") });
        return previsiones;
    }

}

CargoImpreso CargoImpreso::lee(adodb::Connection& conexion, const qvoremp::Empresa& empresa,
    std::int16_t ejercicio, std::int16_t almacen, const std::string& codigo, Donde donde)
{
    const auto clave = clave_de(empresa, ejercicio, almacen, codigo, donde);
    Lectura lectura(conexion, donde);
    if (!lectura.abre("SELECT * FROM Proveedores_Cargos_Atipicos WHERE " + clave))
        throw Error(1000, "QVOREMP:ImpresionCargo",
            "No existe el cargo " + codigo + " del ejercicio " + std::to_string(ejercicio) + " en el almacén "
                + std::to_string(almacen) + ".",
            donde);
    CargoImpreso cargo;
    cargo.Ejercicio = ejercicio;
    cargo.Codigo = lectura.texto("Codigo");
    cargo.Fecha = lectura.fecha("Fecha");
    cargo.Importe = lectura.importe("Importe");
    cargo.Impuesto = lectura.importe("Impuesto");
    cargo.Impuesto_Importe = lectura.importe("Impuesto_Importe");
    cargo.Asiento = lectura.largo("Asiento");
    cargo.Proveedor = lectura.largo("Proveedor");
    cargo.Observ = lectura.texto("Observ");
    cargo.DecimalesImporte = empresa.DecimalesImporte(donde);
    cargo.DecimalesPrecio = empresa.DecimalesPrecio(donde);
    const auto empresa_contable = lectura.largo("EmpContable");
    lee_emisor(cargo, lectura, empresa.Codigo(donde));
    lee_lineas(cargo, lectura, clave);
    cargo.previsiones = previsiones_del_asiento(lectura, empresa_contable, cargo.Fecha.anio(), cargo.Asiento);
    return cargo;
}

std::vector<PrevisionImpresa> lee_previsiones(adodb::Connection& conexion, const qvoremp::Empresa& empresa,
    std::int16_t ejercicio, std::int16_t almacen, const std::string& codigo, Donde donde)
{
    Lectura lectura(conexion, donde);
    if (!lectura.abre("SELECT Fecha, Asiento, EmpContable FROM Proveedores_Cargos_Atipicos WHERE "
            + clave_de(empresa, ejercicio, almacen, codigo, donde)))
        return {};
    const auto fecha = lectura.fecha("Fecha");
    const auto asiento = lectura.largo("Asiento");
    return previsiones_del_asiento(lectura, lectura.largo("EmpContable"), fecha.anio(), asiento);
}

} // namespace atipicos::orvalin
