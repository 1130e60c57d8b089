#include "host/resumen/InstruccionResumen.hpp"

#include "host/sql/Literal.hpp"

namespace atipicos::app {

namespace {

    /// Which charges of a period; a last day counts until its midnight, because a charge may bear a time.
    std::string condicion(
        const PeticionResumen& peticion, const Periodo& periodo, const AmbitoResumen& ambito)
    {
        std::string texto = " WHERE pc.Cod_Empresa =" + std::to_string(ambito.empresa)
            + " AND pc.Fecha >= " + sql::literal(periodo.desde);
        const auto ultimo = Date::de_dia(9999, 12, 31);
        if (periodo.hasta.solo_dia() < ultimo)
            texto += " AND pc.Fecha < " + sql::literal(periodo.hasta.solo_dia().mas_dias(1));
        if (peticion.almacen > 0)
            texto += " AND pc.Cod_Almacen =" + std::to_string(peticion.almacen);
        if (peticion.proveedor > 0)
            texto += " AND pc.Proveedor =" + std::to_string(peticion.proveedor);
        return texto;
    }

    /// An amount as a whole number of ten-thousandths.
    std::string entero(const std::string& importe)
    {
        return "CAST(ROUND(" + importe + " * 10000, 0) AS BIGINT)";
    }

    std::string suma(const std::string& de, const std::string& nombre)
    {
        return ", CAST(SUM(" + de + ") AS VARCHAR(30)) AS " + nombre;
    }

    /// A whole number divided, rounded half away from zero.
    std::string cociente(const std::string& de, int divisor)
    {
        const auto mitad = std::to_string(divisor / 2);
        return "(" + de + " + CASE WHEN " + de + " < 0 THEN -" + mitad + " ELSE " + mitad + " END) / "
            + std::to_string(divisor);
    }

    std::string cabeceras(const std::string& clave, const char* antes, const std::string& donde)
    {
        return "SELECT " + clave + " AS Clave, " + antes + " AS Antes, COUNT(*) AS Cuantos"
            + suma(entero("pc.Importe"), "Base") + suma(entero("pc.Impuesto_Importe"), "Impuesto")
            + " FROM Proveedores_Cargos_Atipicos pc" + donde + " GROUP BY " + clave;
    }

    /// Units by price at the fourth decimal, and that at the second: as `importe_linea` does it.
    std::string lineas(const char* antes, const std::string& donde)
    {
        return std::string("SELECT c.Clave AS Clave, ") + antes + " AS Antes, COUNT(*) AS Cuantos"
            + suma("c.Centimos", "Base") + suma("c.Centimos * c.Tipo", "Impuesto")
            + " FROM (SELECT b.Clave, b.Tipo, " + cociente("b.Producto", 100)
            + " AS Centimos FROM (SELECT a.Clave, a.Tipo, " + cociente("a.Producto", 10000)
            + " AS Producto FROM (SELECT pl.Cod_Articulo AS Clave, " + entero("pc.Impuesto") + " AS Tipo, "
            + entero("pl.Unidades") + " * " + entero("pl.Precio")
            + " AS Producto FROM Proveedores_Cargos_Atipicos pc"
              " INNER JOIN Proveedores_Cargos_Atipicos_Lineas pl ON pl.Cod_Empresa = pc.Cod_Empresa"
              " AND pl.Cod_Ejercicio = pc.Cod_Ejercicio AND pl.Cod_Almacen = pc.Cod_Almacen"
              " AND pl.Codigo = pc.Codigo"
            + donde + ") a) b) c GROUP BY c.Clave";
    }

    std::string mitad(const PeticionResumen& peticion, const AmbitoResumen& ambito, bool antes)
    {
        const auto donde
            = condicion(peticion, antes ? un_anio_antes(peticion.periodo) : peticion.periodo, ambito);
        const char* marca = antes ? "1" : "0";
        switch (peticion.por) {
        case VistaResumen::mes:
            return cabeceras("pc.Fecha", marca, donde);
        case VistaResumen::almacen:
            return cabeceras("pc.Cod_Almacen", marca, donde);
        case VistaResumen::articulo:
            return lineas(marca, donde);
        case VistaResumen::proveedor:
            break;
        }
        return cabeceras("pc.Proveedor", marca, donde);
    }

}

std::string instruccion_resumen(const PeticionResumen& peticion, const AmbitoResumen& ambito)
{
    auto grupos = mitad(peticion, ambito, false) + " UNION ALL " + mitad(peticion, ambito, true);
    if (peticion.por == VistaResumen::mes)
        return grupos;
    const bool de_proveedores = peticion.por == VistaResumen::proveedor;
    const char* catalogo = de_proveedores       ? "Proveedores"
        : peticion.por == VistaResumen::almacen ? "Almacenes"
                                                : "Articulos";
    return "SELECT d.Clave, d.Antes, d.Cuantos, d.Base, d.Impuesto, ISNULL(f.Nombre ,'') AS Nombre FROM ("
        + grupos + ") d LEFT JOIN " + catalogo + " f ON f.Cod_Empresa ="
        + std::to_string(de_proveedores ? ambito.empresa_proveedores : ambito.empresa)
        + " AND f.Codigo = d.Clave";
}

} // namespace atipicos::app
