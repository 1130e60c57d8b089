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

/// What takes logins and their rights away from a new company.
inline std::vector<std::string> sin_derechos(bool en_servidor)
{
    std::vector<std::string> todo;
    if (en_servidor)
        todo = { "DROP FUNCTION orvalin.es_su_usuario, dbo.asiento_cuadra CASCADE",
            "DROP FUNCTION orvalin.actua_por_otros" };
    todo.push_back("DROP TABLE Accesos");
    todo.push_back(
        en_servidor ? "DROP TABLE dbo.Asientos_Incompletos" : "DROP TABLE Bexmor_Asientos_Incompletos");
    return todo;
}

/// What takes the trail of charges away from a new company, and on a server, whose tables are of the schema
/// orvalin, the keys of commits that came after it.
inline std::vector<std::string> sin_historial(bool en_servidor)
{
    if (en_servidor)
        return { "DROP FUNCTION orvalin.historial_anota, orvalin.historial_anula, orvalin.historial_firme, "
                 "orvalin.contador_no_vuelve CASCADE",
            "DROP TABLE orvalin.Historial, orvalin.Historial_Anulaciones",
            "DROP FUNCTION orvalin.historial_puesto",
            "DROP FUNCTION orvalin.confirmacion_anota, orvalin.confirmacion_busca",
            "DROP TABLE orvalin.Confirmaciones" };
    std::vector<std::string> todo{ "DROP TABLE Historial", "DROP TABLE Historial_Anulaciones" };
    for (const auto* disparador : { "Cargo_Alta", "Cargo_Cambio", "Cargo_Baja", "Linea_Alta", "Linea_Cambio",
             "Linea_Baja", "Asiento_Anulado" })
        todo.push_back(std::string("DROP TRIGGER ") + disparador);
    return todo;
}

/// What makes of a new company of a server one of that version, for psql.
inline std::string con_version_anterior(int version)
{
    std::string todo = "SET search_path TO orvalin; ";
    for (const auto& una : sin_derechos(true))
        todo += una + "; ";
    for (const auto& una : sin_historial(true))
        todo += una + "; ";
    for (const auto& una : hacia_version_2("orvalin."))
        todo += una + "; ";
    const auto numero = std::to_string(version);
    return todo + "DROP TABLE dbo.Regularizaciones; " + "UPDATE orvalin.Esquema SET Version = " + numero
        + "; UPDATE dbo.Esquema SET Version = " + numero;
}

} // namespace atipicos::pruebas
