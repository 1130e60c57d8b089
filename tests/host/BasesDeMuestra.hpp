#pragma once

#include "host/bases/Bases.hpp"
#include "tests/support/CarpetaTemporal.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace atipicos::pruebas {

/// The first column of every row of a query, as texts.
inline std::vector<std::string> columna(adodb::Connection& conexion, const std::string& sql)
{
    std::vector<std::string> valores;
    const auto rs = conexion.CreateRecordset();
    rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
    for (; !rs->Eof(); rs->MoveNext()) {
        const auto valor = rs->Fields(std::size_t{ 0 }).Value();
        valores.push_back(valor.es_nulo() ? "null" : CStr(valor));
    }
    return valores;
}

inline std::int32_t cuenta(adodb::Connection& conexion, const std::string& desde)
{
    return std::stoi(columna(conexion, "SELECT COUNT(*) AS N FROM " + desde).at(0));
}

/// A charge of warehouse 3 without lines, straight into its table.
struct CargoInsertado {
    std::string codigo;
    int ejercicio = 2026;
    int asiento = 17;
    int usuario = 2;
};
inline void inserta_cargo(adodb::Connection& gestion, const CargoInsertado& cargo)
{
    const auto ejercicio = std::to_string(cargo.ejercicio);
    gestion.Execute(
        "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, "
        "Proveedor, "
        "Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, "
        "Impuesto, Impuesto_Importe, Tipo) VALUES (1, "
        + ejercicio + ", 3, '" + cargo.codigo + "', 106, '10/02/" + ejercicio + "',131.98, "
        + std::to_string(cargo.asiento) + ", 2, " + ejercicio + ", " + std::to_string(cargo.usuario)
        + ", '9:05:03', 'Piezas «rajadas»', 0, 0, 7, 9.24, 1)");
}

/// What `accion` raised: its description, or "no error".
template <class Accion> std::string error_de(Accion accion)
{
    try {
        accion();
    } catch (const Error& error) {
        return error.descripcion();
    }
    return "no error";
}

/// The databases of the sample company in a folder of the test's own.
struct BasesDeMuestra : testing::Test {
    CarpetaTemporal carpeta;
    bases::Bases bases = abre();

private:
    bases::Bases abre() const
    {
        bases::crea_bases(carpeta.ruta(), false);
        return bases::abre_bases(carpeta.ruta(), { .sincronizacion_completa = false });
    }
};

} // namespace atipicos::pruebas
