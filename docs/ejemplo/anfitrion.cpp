// A host in C++: it lends the component a company and a connection, records a charge, and reads what was
// stored.
#include <automation/Anfitrion.hpp>
#include <automation/Componente.hpp>

#include <iostream>
#include <sqlite3.h>

using namespace atipicos::automation;

sqlite3* base = nullptr;

void ejecuta(const std::string& sql)
{
    if (sqlite3_exec(base, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw Fallo(-2147217900, "SQLite", sqlite3_errmsg(base));
}

Despacho empresa()
{
    return Anfitrion::crea({ { "Codigo", [](const Argumentos&) { return Valor(std::int16_t{ 1 }); } },
        { "DecimalesImporte", [](const Argumentos&) { return Valor(2); } },
        { "Parametro", [](const Argumentos&) { return Valor("1"); } },
        { "PorcentajeImpuesto", [](const Argumentos&) { return Valor(Moneda{ 70000 }); } } });
}

Despacho conexion()
{
    return Anfitrion::crea({ { "Execute", [](const Argumentos& argumentos) {
                                  ejecuta(argumentos.valor(0).texto());
                                  argumentos.escribe(1, std::int32_t{ sqlite3_changes(base) });
                                  return Valor();
                              } } });
}

int escribe(void*, int cuantas, char** valores, char**)
{
    for (int i = 0; i < cuantas; ++i)
        std::cout << valores[i] << (i + 1 < cuantas ? " | " : "\n");
    return 0;
}

int main()
{
    sqlite3_open(":memory:", &base);
    ejecuta(
        "CREATE TABLE Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, "
        "Proveedor, Fecha,"
        " Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto,"
        " Impuesto_Importe, Tipo); CREATE TABLE Proveedores_Cargos_Atipicos_Lineas (Cod_Empresa, "
        "Cod_Ejercicio,"
        " Cod_Almacen, Codigo, Num_Linea, Cod_Articulo, Descripcion, Unidades, Precio, Observ)");
    const auto cargo = crea("QVORComprasAtip.clsAtipico", &DllGetClassObject);
    cargo.pon("EmpresaOrvalin", empresa().valor());
    cargo.pon("ConexionOrvalin", conexion().valor());
    cargo.pon("Cod_Ejercicio", 2026);
    cargo.pon("Codigo", "AT260001");
    cargo.pon("Fecha", "21/11/2026");
    cargo.pon("Importe", "1.234,50");
    cargo.pon("AplicarImpuesto", true);
    cargo.objeto("Lineas").llama("Add", 1010, "Queso añejo con grietas", 100, Moneda{ 123450 });
    const bool error = cargo.llama("Insertar").logico();
    sqlite3_exec(base,
        "SELECT c.Codigo, Fecha, Impuesto_Importe, Descripcion FROM Proveedores_Cargos_Atipicos c JOIN"
        " Proveedores_Cargos_Atipicos_Lineas l ON l.Codigo = c.Codigo",
        escribe, nullptr, nullptr);
    return error ? 1 : 0;
}
