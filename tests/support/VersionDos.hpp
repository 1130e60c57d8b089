#pragma once

#include <string>
#include <vector>

namespace atipicos::pruebas {

/// What makes of the management tables of a new company those of version 2; `esquema` with its point.
inline std::vector<std::string> hacia_version_2(const std::string& esquema = {})
{
    return { "DROP INDEX " + esquema + "Importaciones_Referencia",
        "ALTER TABLE " + esquema + "Importaciones DROP COLUMN Contenido" };
}

/// The same, and the number of both products, for psql.
inline std::string con_version_anterior(int version)
{
    std::string todo;
    for (const auto& una : hacia_version_2("orvalin."))
        todo += una + "; ";
    const auto numero = std::to_string(version);
    return todo + "DROP TABLE dbo.Regularizaciones; " + "UPDATE orvalin.Esquema SET Version = " + numero
        + "; UPDATE dbo.Esquema SET Version = " + numero;
}

} // namespace atipicos::pruebas
