#include "charges/Instrucciones.hpp"

#include "runtime/Formato.hpp"

namespace atipicos::instrucciones {

namespace {

    std::string num(std::int32_t valor) { return std::to_string(valor); }
    std::string num(Currency valor) { return texto_sql(valor.a_double()); }

    /// The condition that every statement but the deletions ends with.
    std::string condicion(const clsAtipico& cargo, std::int16_t Cod_Empresa)
    {
        return " WHERE Cod_Empresa=" + num(Cod_Empresa) + " AND Cod_Ejercicio =" + num(cargo.Cod_Ejercicio)
            + " AND Cod_Almacen =" + num(cargo.Cod_Almacen) + " AND Codigo ='" + cargo.Codigo + "'";
    }

    std::string condicion_eliminar(const clsAtipico& cargo, std::int16_t Cod_Empresa)
    {
        return " WHERE Cod_Empresa =" + num(Cod_Empresa) + "   AND Cod_Ejercicio =" + num(cargo.Cod_Ejercicio)
            + "   AND Cod_Almacen =" + num(cargo.Cod_Almacen) + "   AND Codigo ='" + cargo.Codigo + "'";
    }

}

std::string existe(
    std::int16_t Cod_Empresa, std::int16_t Cod_Ejercicio, std::int16_t Cod_Almacen, const std::string& Codigo)
{
    // "Almacen", not "Cod_Almacen": the existence query has always asked for that column.
    return "SELECT Codigo FROM Proveedores_Cargos_Atipicos WHERE Cod_Empresa =" + num(Cod_Empresa)
        + " AND Cod_Ejercicio =" + num(Cod_Ejercicio) + " AND Almacen =" + num(Cod_Almacen) + " AND Codigo ='"
        + Codigo + "'";
}

std::string contador(std::int16_t Cod_Empresa, std::int16_t Cod_Ejercicio, std::int16_t Cod_Almacen)
{
    return "SELECT * FROM Contador_Proveedores_Cargos_Atipicos WHERE Cod_Empresa =" + num(Cod_Empresa)
        + " AND Cod_Ejercicio =" + num(Cod_Ejercicio) + " AND Cod_Almacen =" + num(Cod_Almacen);
}

std::string inserta_cabecera(const clsAtipico& cargo, const Contexto& contexto)
{
    return "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
           "Cod_Almacen, Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, "
           "EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo)"
           " VALUES ("
        + num(contexto.Cod_Empresa) + ", " + num(cargo.Cod_Ejercicio) + ", " + num(cargo.Cod_Almacen) + ", '"
        + cargo.Codigo + "'" + ", " + num(cargo.Proveedor) + ", '" + cargo.Fecha.texto_regional() + "',"
        + num(cargo.Importe) + ", " + num(cargo.Asiento) + ", " + num(cargo.EmpContable) + ", "
        + num(cargo.EjContable) + ", " + texto_sql(contexto.Usuario) + ", '" + cargo.Hora.texto_regional()
        + "', '" + cargo.Observ + "', " + num(cargo.Cod_Compra) + ", " + num(cargo.Documento) + ", "
        + num(contexto.Impuesto) + ", " + num(contexto.Impuesto_Importe) + ", " + num(cargo.Tipo) + ")";
}

std::string inserta_linea(
    const clsAtipico& cargo, std::int16_t Cod_Empresa, const clsAtipico_Linea& linea, std::int32_t Num_Linea)
{
    return "INSERT INTO Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, Cod_Ejercicio,"
           " Cod_Almacen, Codigo, Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio,"
           " Observ) VALUES ("
        + num(Cod_Empresa) + ", " + num(cargo.Cod_Ejercicio) + ", " + num(cargo.Cod_Almacen) + ", '"
        + cargo.Codigo + "'" + ", " + num(Num_Linea) + ", " + num(linea.Cod_Articulo) + ", '"
        + linea.Descripcion + "'" + ", " + num(linea.Unidades) + ", " + num(linea.Precio) + ", '"
        + linea.Observaciones + "'" + ")";
}

std::string modifica_cabecera(const clsAtipico& cargo, const Contexto& contexto)
{
    return " UPDATE Proveedores_Cargos_Atipicos "
           " SET Proveedor = "
        + num(cargo.Proveedor) + ", Fecha = '" + cargo.Fecha.texto_regional() + "'" + ", Importe = "
        + num(cargo.Importe) + ", Asiento =" + num(cargo.Asiento) + ", EmpContable =" + num(cargo.EmpContable)
        + ", EjContable =" + num(cargo.EjContable) + ", Observ ='" + cargo.Observ + "'"
        + ", Cod_Compra =" + num(cargo.Cod_Compra) + ", Documento =" + num(cargo.Documento) + ", Hora ='"
        + cargo.Hora.texto_regional() + "'" + ", Usuario =" + texto_sql(contexto.Usuario)
        + ", Impuesto =" + num(contexto.Impuesto) + ", Impuesto_Importe =" + num(contexto.Impuesto_Importe)
        + ", Tipo =" + num(cargo.Tipo) + condicion(cargo, contexto.Cod_Empresa);
}

std::string modifica_linea(
    const clsAtipico& cargo, std::int16_t Cod_Empresa, const clsAtipico_Linea& linea, std::int32_t Num_Linea)
{
    return "UPDATE Proveedores_Cargos_Atipicos_Lineas SET "
           " Cod_Articulo = "
        + num(linea.Cod_Articulo) + ", Unidades= " + num(linea.Unidades) + ", Precio= " + num(linea.Precio)
        + ", Observ ='" + linea.Observaciones + "'" + ", Descripcion ='" + linea.Descripcion + "'"
        + condicion(cargo, Cod_Empresa) + " AND Num_Linea =" + num(Num_Linea);
}

std::string elimina_lineas(const clsAtipico& cargo, std::int16_t Cod_Empresa)
{
    return "DELETE FROM Proveedores_Cargos_Atipicos_Lineas " + condicion_eliminar(cargo, Cod_Empresa);
}

std::string elimina_cabecera(const clsAtipico& cargo, std::int16_t Cod_Empresa)
{
    return "DELETE FROM Proveedores_Cargos_Atipicos " + condicion_eliminar(cargo, Cod_Empresa);
}

} // namespace atipicos::instrucciones
