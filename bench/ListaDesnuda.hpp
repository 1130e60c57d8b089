#pragma once

#include "bench/Desnudo.hpp"

#include <array>
#include <vector>

namespace atipicos::bench {

/// The columns of the list in its order, by name.
inline constexpr std::array<const char*, 13> columnas{ "Codigo", "Cod_Almacen", "Nombre_Almacen", "Proveedor",
    "Nombre_Proveedor", "Fecha", "Importe", "Impuesto_Importe", "Impuesto", "Asiento", "Usuario",
    "Nombre_Usuario", "Observ" };

inline std::array<int, 13> posiciones(sqlite3_stmt* instruccion)
{
    std::array<int, 13> resultado{};
    for (std::size_t i = 0; i < columnas.size(); ++i)
        for (int j = 0; j < sqlite3_column_count(instruccion); ++j)
            if (std::string(columnas[i]) == sqlite3_column_name(instruccion, j))
                resultado[i] = j;
    return resultado;
}

/// The rows of the list as texts, as the database gives them.
inline std::vector<std::string> lista_desnuda(sqlite3* base, const std::string& sql)
{
    std::vector<std::string> filas;
    sqlite3_stmt* instruccion = nullptr;
    comprueba(sqlite3_prepare_v2(base, sql.c_str(), -1, &instruccion, nullptr), base);
    const auto donde = posiciones(instruccion);
    while (sqlite3_step(instruccion) == SQLITE_ROW) {
        std::string fila;
        for (const int columna : donde) {
            if (const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(instruccion, columna)))
                fila.append(texto, static_cast<std::size_t>(sqlite3_column_bytes(instruccion, columna)));
            fila += '\t';
        }
        filas.push_back(std::move(fila));
    }
    sqlite3_finalize(instruccion);
    return filas;
}

} // namespace atipicos::bench
