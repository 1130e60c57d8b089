#include "tests/app/LibrosEnTexto.hpp"

#include "host/bases/Bases.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Formato.hpp"

#include <functional>
#include <memory>

namespace atipicos::pruebas {

namespace {

    /// The current row of a query.
    class Fila {
    public:
        explicit Fila(adodb::Recordset& rs)
            : m_rs(rs)
        {
        }
        [[nodiscard]] std::string operator[](const char* columna) const
        {
            const auto valor = m_rs.Fields(columna).Value();
            return valor.es_nulo() ? "(nada)" : CStr(valor);
        }
        [[nodiscard]] std::string importe(const char* columna, int decimales = 2) const
        {
            return texto_pantalla(CCur(m_rs.Fields(columna).Value()), decimales);
        }

    private:
        adodb::Recordset& m_rs;
    };

    /// Every row of a query as a line.
    std::string lineas(adodb::Connection& conexion, const std::string& sql,
        const std::function<std::string(const Fila&)>& linea)
    {
        std::string texto;
        const auto rs = conexion.CreateRecordset();
        rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
        for (; !rs->Eof(); rs->MoveNext())
            texto += linea(Fila(*rs)) + '\n';
        return texto;
    }

    std::string a_la_derecha(const std::string& texto, std::size_t ancho)
    {
        return std::string(texto.size() < ancho ? ancho - texto.size() : 0, ' ') + texto;
    }

    std::string lineas_de_cargo(adodb::Connection& gestion, const std::string& clave)
    {
        return lineas(gestion,
            "SELECT * FROM Proveedores_Cargos_Atipicos_Lineas WHERE " + clave + " ORDER BY Num_Linea",
            [](const Fila& f) {
                return "  línea " + f["Num_Linea"] + ": " + f["Cod_Articulo"] + " «" + f["Descripcion"] + "» "
                    + f.importe("Unidades", 4) + " a " + f.importe("Precio", 4) + " «" + f["Observ"] + "»";
            });
    }

    std::string apuntes(adodb::Connection& contabilidad, const std::string& asiento)
    {
        return lineas(
            contabilidad, "SELECT * FROM Apuntes WHERE " + asiento + " ORDER BY Linea", [](const Fila& f) {
                auto texto = "    " + a_la_derecha(f["Linea"], 2) + "  " + f["Cuenta"] + "  debe "
                    + a_la_derecha(f.importe("Debe"), 11) + "  haber " + a_la_derecha(f.importe("Haber"), 11)
                    + "  dto. " + f["Departamento"] + "  " + f["Documento"] + "  «" + f["Concepto"] + "»";
                if (f["ConceptoAutomatico"] != "")
                    texto += " automático " + f["ConceptoAutomatico"];
                if (f["TipoImpuesto"] != "0")
                    texto += " impuesto " + f["TipoImpuesto"] + " al " + f.importe("PorcentajeImpuesto")
                        + " % sobre " + f.importe("BaseImpuesto");
                return texto;
            });
    }

    std::string registros(adodb::Connection& contabilidad, const std::string& asiento)
    {
        return lineas(contabilidad, "SELECT * FROM Registro_Impuestos WHERE " + asiento + " ORDER BY Linea",
            [](const Fila& f) {
                return "  registro de impuesto del apunte " + f["Linea"] + ": " + f["Fecha"] + "  "
                    + f["Documento"] + "  clase " + f["Clase"] + "  indicador " + f["Indicador"] + "  tipo "
                    + f["TipoImpuesto"] + "  base " + f.importe("Base") + "  cuota " + f.importe("Cuota")
                    + "  total " + f.importe("TotalImpuesto");
            });
    }

    std::string previsiones(adodb::Connection& contabilidad, const std::string& asiento)
    {
        return lineas(contabilidad, "SELECT * FROM Previsiones WHERE " + asiento + " ORDER BY Numero",
            [](const Fila& f) {
                return "  previsión " + a_la_derecha(f["Numero"], 2) + ": " + f["Vencimiento"] + " "
                    + a_la_derecha(f.importe("Importe"), 11) + "  documento " + f["TipoDoc"] + "  cuenta "
                    + f["Cuenta"] + "  banco " + f["Banco"] + "  dto. " + f["Departamento"];
            });
    }

    std::string contabilizado(adodb::Connection& contabilidad, const Fila& cargo)
    {
        const auto empresa_y_ejercicio
            = "Cod_Empresa =" + cargo["EmpContable"] + " AND Cod_Ejercicio =" + cargo["Cod_Ejercicio"];
        const auto de_asiento = empresa_y_ejercicio + " AND Asiento =" + cargo["Asiento"];
        return lineas(contabilidad,
                   "SELECT * FROM Asientos WHERE " + empresa_y_ejercicio + " AND Numero =" + cargo["Asiento"],
                   [](const Fila& f) {
                       return "  asiento " + f["Numero"] + " de la empresa contable " + f["Cod_Empresa"]
                           + ", ejercicio " + f["Cod_Ejercicio"] + ", del " + f["Fecha"] + ", usuario "
                           + f["Usuario"];
                   })
            + apuntes(contabilidad, de_asiento) + registros(contabilidad, de_asiento)
            + previsiones(contabilidad, de_asiento);
    }

}

std::string libros_en_texto(const bases::Bases& bases)
{
    return lineas(*bases.orvalin,
        "SELECT * FROM Proveedores_Cargos_Atipicos ORDER BY Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo",
        [&](const Fila& f) {
            const auto clave = "Cod_Empresa =" + f["Cod_Empresa"]
                + " AND Cod_Ejercicio =" + f["Cod_Ejercicio"] + " AND Cod_Almacen =" + f["Cod_Almacen"]
                + " AND Codigo ='" + f["Codigo"] + "'";
            return f["Codigo"] + " del almacén " + f["Cod_Almacen"] + ", ejercicio " + f["Cod_Ejercicio"]
                + ", empresa " + f["Cod_Empresa"] + "\n  " + f["Fecha"] + "  proveedor " + f["Proveedor"]
                + "  importe " + f.importe("Importe") + "  impuesto " + f.importe("Impuesto") + " % "
                + f.importe("Impuesto_Importe") + "  usuario " + f["Usuario"] + "  compra " + f["Cod_Compra"]
                + "  documento " + f["Documento"] + "  tipo " + f["Tipo"] + "\n  «" + f["Observ"] + "»\n"
                + lineas_de_cargo(*bases.orvalin, clave) + contabilizado(*bases.bexmor, f);
        });
}

} // namespace atipicos::pruebas
