#pragma once

#include "engines/sql/Reescritura.hpp"
#include "platform/adodb/Connection.hpp"

#include <gmock/gmock.h>

#include <string>

/// Statements as they arrive at a database with a few date columns and a schema for the second product.
namespace atipicos::pruebas {

inline sql::Catalogo catalogo()
{
    sql::Catalogo c;
    c.agrega_fecha("Cargos", "Fecha", 1);
    c.agrega_fecha("Cargos", "Hora");
    c.agrega_fecha("\"Bexmor\".Asientos", "Dia");
    c.agrega_base("Bexmor", "\"Bexmor\".");
    return c;
}

inline std::string reescrita(const std::string& sql) { return sql::reescribe(sql, catalogo()); }

inline std::string error_al_reescribir(const std::string& sql)
{
    try {
        return "no error: " + reescrita(sql);
    } catch (const adodb::ErrorBaseDatos& error) {
        EXPECT_EQ(error.categoria(), adodb::Categoria::instruccion);
        EXPECT_EQ(error.instruccion(), sql);
        return error.descripcion();
    }
}

} // namespace atipicos::pruebas
