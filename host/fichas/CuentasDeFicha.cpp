#include "host/fichas/CuentasDeFicha.hpp"

#include "context/claves.hpp"
#include "host/bexmor/Biblioteca.hpp"
#include "host/sql/Literal.hpp"
#include "platform/adodb/campos.hpp"

#include <array>
#include <utility>
#include <vector>

namespace atipicos::app {

namespace {

    /// One of the three kinds of account that a supplier has.
    struct ClaseDeCuenta {
        const char* columna; ///< of its record, where it has one of its own
        std::string raiz; ///< with which it is formed else
        const char* apellido; ///< behind the supplier's name
    };

    std::string parametro(adodb::Connection& orvalin, std::int16_t empresa, std::string_view clave)
    {
        const auto rs = adodb::consulta(orvalin,
            "SELECT Valor FROM Parametros WHERE Cod_Empresa =" + std::to_string(empresa)
                + " AND Clave =" + sql::literal(clave));
        return rs->Eof() ? std::string() : adodb::texto(*rs, "Valor");
    }

    std::array<ClaseDeCuenta, 3> clases(const AmbitoDeFichas& ambito)
    {
        auto& orvalin = *ambito.bases.orvalin;
        const auto rs = adodb::consulta(
            orvalin, "SELECT RaizProveedores FROM Empresas WHERE Codigo =" + std::to_string(ambito.empresa));
        return { { { "Cta_Proveedor", rs->Eof() ? std::string() : CStr(rs->Fields("RaizProveedores").Value()),
                       "" },
            { "Cta_Deudor", parametro(orvalin, ambito.empresa, claves::Raiz_ProveedoresDeudor), " (deudor)" },
            { "Cta_DeudaCortoPlazo",
                parametro(orvalin, ambito.empresa, claves::Raiz_ProveedoresDeudaCortoPlazo),
                " (deuda a corto plazo)" } } };
    }

    /// Company and year, and how many digits its accounts have.
    struct EjercicioContable {
        std::int16_t empresa;
        std::int16_t ejercicio;
        std::int16_t longitud;
    };

    std::string empresas_contables(const AmbitoDeFichas& ambito)
    {
        const auto rs = adodb::consulta(*ambito.bases.orvalin,
            "SELECT DISTINCT EmpContable FROM Almacenes WHERE EmpContable > 0 AND Cod_Empresa ="
                + std::to_string(ambito.empresa));
        std::string lista;
        for (; !rs->Eof(); rs->MoveNext())
            lista += (lista.empty() ? "" : ", ") + std::to_string(adodb::entero(*rs, "EmpContable"));
        return lista.empty() ? "0" : lista;
    }

    std::vector<EjercicioContable> ejercicios(const AmbitoDeFichas& ambito)
    {
        std::vector<EjercicioContable> todos;
        const auto rs = adodb::consulta(*ambito.bases.bexmor,
            "SELECT e.Cod_Empresa, e.Ejercicio, m.LongitudCuenta FROM Ejercicios e INNER JOIN Empresas m"
            " ON m.Codigo = e.Cod_Empresa WHERE e.Cod_Empresa IN ("
                + empresas_contables(ambito) + ")");
        for (; !rs->Eof(); rs->MoveNext())
            todos.push_back({ adodb::entero(*rs, "Cod_Empresa"), adodb::entero(*rs, "Ejercicio"),
                adodb::entero(*rs, "LongitudCuenta") });
        return todos;
    }

    std::string formada(const std::string& raiz, std::int32_t proveedor, int longitud)
    {
        const bexmor::Biblioteca biblioteca(nullptr);
        const auto empresa = biblioteca.NuevaEmpresa();
        return biblioteca.NuevoServicioCuentas(*empresa)->FormarCuenta(raiz, proveedor, longitud);
    }

    std::string filtro(const EjercicioContable& de, const std::string& cuenta)
    {
        return " WHERE Cod_Empresa =" + std::to_string(de.empresa)
            + " AND Cod_Ejercicio =" + std::to_string(de.ejercicio) + " AND Cuenta =" + sql::literal(cuenta);
    }

    void pon_cuenta(adodb::Connection& bexmor, const EjercicioContable& de, const std::string& cuenta,
        const std::string& nombre, const std::string& antes)
    {
        if (adodb::consulta(bexmor, "SELECT Cuenta FROM Cuentas" + filtro(de, cuenta))->Eof())
            bexmor.Execute("INSERT INTO Cuentas (Cod_Empresa, Cod_Ejercicio, Cuenta, Nombre) VALUES ("
                + std::to_string(de.empresa) + ", " + std::to_string(de.ejercicio) + ", "
                + sql::literal(cuenta) + ", " + en_instruccion(nombre) + ")");
        else if (nombre != antes)
            bexmor.Execute("UPDATE Cuentas SET Nombre =" + en_instruccion(nombre) + filtro(de, cuenta)
                + " AND Nombre =" + en_instruccion(antes));
    }

}

void prepara_cuentas(
    const AmbitoDeFichas& ambito, std::int32_t proveedor, const std::string& nombre, const std::string& antes)
{
    const auto rs = adodb::consulta(*ambito.bases.orvalin,
        "SELECT Cta_Proveedor, Cta_Deudor, Cta_DeudaCortoPlazo FROM Proveedores WHERE Cod_Empresa ="
            + std::to_string(ambito.empresa_proveedores) + " AND Codigo =" + std::to_string(proveedor));
    for (const auto& clase : clases(ambito)) {
        const auto propia = adodb::texto(*rs, clase.columna);
        if (propia.empty() && clase.raiz.empty())
            continue; // the company does without
        for (const auto& de : ejercicios(ambito))
            pon_cuenta(*ambito.bases.bexmor, de,
                propia.empty() ? formada(clase.raiz, proveedor, de.longitud) : propia,
                nombre + clase.apellido, antes + clase.apellido);
    }
}

bool hay_cuenta(const AmbitoDeFichas& ambito, const std::string& cuenta)
{
    return !adodb::consulta(*ambito.bases.bexmor,
        "SELECT Cuenta FROM Cuentas WHERE Cod_Empresa IN (" + empresas_contables(ambito)
            + ") AND Cuenta =" + en_instruccion(cuenta))
                ->Eof();
}

} // namespace atipicos::app
