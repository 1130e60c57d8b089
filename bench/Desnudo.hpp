#pragma once

#include <filesystem>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

/// libsqlite3 called directly, with as little as possible around it.
namespace atipicos::bench {

struct Cierra {
    void operator()(sqlite3* base) const { sqlite3_close(base); }
    void operator()(sqlite3_stmt* instruccion) const { sqlite3_finalize(instruccion); }
};
using Base = std::unique_ptr<sqlite3, Cierra>;
using Instruccion = std::unique_ptr<sqlite3_stmt, Cierra>;

inline void comprueba(int resultado, sqlite3* base)
{
    if (resultado != SQLITE_OK && resultado != SQLITE_ROW && resultado != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(base));
}

inline Instruccion prepara(sqlite3* base, const std::string& sql, unsigned indicaciones = 0)
{
    sqlite3_stmt* instruccion = nullptr;
    if (sqlite3_prepare_v3(
            base, sql.c_str(), static_cast<int>(sql.size()) + 1, indicaciones, &instruccion, nullptr)
        != SQLITE_OK)
        throw std::runtime_error(std::string(sqlite3_errmsg(base)) + " in: " + sql);
    return Instruccion(instruccion);
}

/// Runs a statement and reads all its rows.
inline void recorre(sqlite3_stmt* instruccion, sqlite3* base)
{
    int resultado = SQLITE_ROW;
    while (resultado == SQLITE_ROW) {
        resultado = sqlite3_step(instruccion);
        if (resultado == SQLITE_ROW)
            for (int i = 0; i < sqlite3_column_count(instruccion); ++i)
                static_cast<void>(sqlite3_column_text(instruccion, i));
    }
    if (resultado != SQLITE_DONE)
        throw std::runtime_error(std::string(sqlite3_errmsg(base)) + " in: " + sqlite3_sql(instruccion));
}

inline void ejecuta(sqlite3* base, const std::string& sql) { recorre(prepara(base, sql).get(), base); }

/// All rows of a query, as texts.
inline std::vector<std::vector<std::string>> lee_filas(sqlite3* base, const std::string& sql)
{
    std::vector<std::vector<std::string>> todas;
    const auto instruccion = prepara(base, sql);
    while (sqlite3_step(instruccion.get()) == SQLITE_ROW) {
        auto& fila = todas.emplace_back();
        for (int i = 0; i < sqlite3_column_count(instruccion.get()); ++i) {
            const auto* texto = reinterpret_cast<const char*>(sqlite3_column_text(instruccion.get(), i));
            fila.emplace_back(texto == nullptr ? "" : texto);
        }
    }
    return todas;
}

/// Opens a file with the settings of the embedded default; `adjunta`, when given, is attached read-only as
/// `Bexmor`.
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
