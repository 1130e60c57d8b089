#pragma once

#include <cstddef>
#include <string>

/// So many charges of 2026 for the lists to read.
namespace atipicos::bench {

inline std::string muchos_cargos(std::size_t cuantos)
{
    return "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
        + std::to_string(cuantos) + R"()
        INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha,
            Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto,
            Impuesto_Importe, Tipo)
        SELECT 1, 2026, 1 + i % 4, 'AT' || (260000 + i), 101 + i % 14, date('2026-01-01', '+' || (i * 7 % 365) || ' days'),
            (i * 37 % 1000000) / 100.0, i, 1, 2026, 1 + i % 3, '2026-11-21 09:05:03', 'Mercancía dañada, albarán ' || i, 0, 0,
            7, round(i * 37 % 1000000 / 100.0 * 0.07, 2), 0 FROM n)";
}

/// The same for a PostgreSQL server.
inline std::string muchos_cargos_en_postgresql(std::size_t cuantos)
{
    return R"(
        INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, Proveedor, Fecha,
            Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, Cod_Compra, Documento, Impuesto,
            Impuesto_Importe, Tipo)
        SELECT 1, 2026, 1 + i % 4, 'AT' || (260000 + i), 101 + i % 14, date '2026-01-01' + i * 7 % 365,
            (i * 37 % 1000000) / 100.0, i, 1, 2026, 1 + i % 3, timestamp '2026-11-21 09:05:03',
            'Mercancía dañada, albarán ' || i, 0, 0, 7, round(i * 37 % 1000000 / 100.0 * 0.07, 2), 0
        FROM generate_series(1, )"
        + std::to_string(cuantos) + ") AS n (i)";
}

} // namespace atipicos::bench
