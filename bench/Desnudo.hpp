#pragma once

#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>

/// libsqlite3 called directly, with as little as possible around it.
namespace atipicos::bench {

struct Cierra {
    void operator()(sqlite3* base) const { sqlite3_close(base); }
};
using Base = std::unique_ptr<sqlite3, Cierra>;

inline void comprueba(int resultado, sqlite3* base)
{
    if (resultado != SQLITE_OK && resultado != SQLITE_ROW && resultado != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(base));
}

/// Runs one statement and reads all its rows.
inline void ejecuta(sqlite3* base, const std::string& sql)
{
    sqlite3_stmt* instruccion = nullptr;
    comprueba(
        sqlite3_prepare_v2(base, sql.c_str(), static_cast<int>(sql.size()) + 1, &instruccion, nullptr), base);
    int resultado = SQLITE_ROW;
    while (resultado == SQLITE_ROW) {
        resultado = sqlite3_step(instruccion);
        if (resultado == SQLITE_ROW)
            for (int i = 0; i < sqlite3_column_count(instruccion); ++i)
                static_cast<void>(sqlite3_column_text(instruccion, i));
    }
    sqlite3_finalize(instruccion);
    if (resultado != SQLITE_DONE)
        throw std::runtime_error(std::string(sqlite3_errmsg(base)) + " in: " + sql);
}

/// Opens a file with the settings of the embedded default; `adjunta`, when given, is attached read-only.
inline Base abre(
    const std::filesystem::path& fichero, bool duradera, const std::filesystem::path& adjunta = {})
{
    sqlite3* base = nullptr;
    const int resultado
        = sqlite3_open_v2(fichero.c_str(), &base, SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI, nullptr);
    Base dueno(base);
    comprueba(resultado, base);
    ejecuta(base, "PRAGMA journal_mode=WAL");
    ejecuta(base, duradera ? "PRAGMA synchronous=FULL" : "PRAGMA synchronous=OFF");
    ejecuta(base, "PRAGMA foreign_keys=ON");
    if (!adjunta.empty())
        ejecuta(base, "ATTACH 'file:" + adjunta.string() + "?mode=ro' AS Bexmor");
    return dueno;
}

} // namespace atipicos::bench
