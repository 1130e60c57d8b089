#pragma once

#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Vigencia.hpp"
#include "platform/adodb/Connection.hpp"

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::sqlite {

class Recordset;

/// A database file that another connection writes and this one may only read, as `nombre.dbo.Tabla`.
struct Adjunta {
    std::string nombre;
    std::filesystem::path fichero;
};

struct Opciones {
    std::filesystem::path fichero;
    std::vector<Adjunta> adjuntas = {};
    bool crear = false; ///< makes the file when there is none
    bool solo_lectura = false;
    std::chrono::milliseconds espera{ 5000 }; ///< how long to wait for another user's lock
    bool sincronizacion_completa = true; ///< a commit survives a power cut; off only to measure
};

/// A connection to a database file: write-ahead log, foreign keys on, and a transaction takes the write lock
/// at once (`BEGIN IMMEDIATE`), so that it cannot find out at its end that another came first.
///
/// Attached files are opened read-only: that lock would otherwise be taken on them too.
///
/// Some failures, a full disk among them, make SQLite undo the whole transaction at once. From then on every
/// statement is refused until `RollbackTrans`: alone it would be stored outside any transaction.
///
/// Only one thread at a time may use a connection and its recordsets.
class Connection final : public adodb::Connection {
public:
    /// Raises an error that names the file and what is wrong with it: missing, a folder, no database.
    [[nodiscard]] static std::shared_ptr<Connection> Abrir(
        const Opciones& opciones, Donde donde = Donde::aqui());

    void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    void BeginTrans(Donde donde = Donde::aqui()) override;
    void CommitTrans(Donde donde = Donde::aqui()) override;
    void RollbackTrans(Donde donde = Donde::aqui()) override;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    /// The statement as this database wants it. Refused when the transaction it belongs to is lost.
    [[nodiscard]] std::string reescribe(const std::string& sql, Donde donde);

    /// Rows that are still being read would stand in the way of a write that comes after another user's:
    /// they are read to their end and kept.
    void guarda_lecturas(Donde donde);
    void anota_lectura(Recordset& filas) { m_lecturas.push_back(&filas); }
    void olvida_lectura(const Recordset& filas) noexcept;

    [[nodiscard]] bool en_transaccion() const noexcept { return m_en_transaccion; }

    /// The columns of a table's primary key, in no particular order; asked of the database once.
    [[nodiscard]] const std::vector<std::string>& columnas_clave(
        const std::string& esquema, const std::string& tabla, Donde donde);
    [[nodiscard]] sqlite3* base() const noexcept { return m_base.get(); }

private:
    struct Cierra {
        void operator()(sqlite3* base) const noexcept { sqlite3_close_v2(base); }
    };

    explicit Connection(sqlite3* base);
    void prepara(const Opciones& opciones, Donde donde);
    void adjunta(const Adjunta& otra, Donde donde);
    void lee_catalogo(Donde donde);
    void comprueba_transaccion(const char* instruccion, Donde donde) const; ///< that one is open
    void ejecuta(const std::string& sql, std::int32_t* afectadas, Donde donde); ///< without rewriting

    std::unique_ptr<sqlite3, Cierra> m_base;
    std::vector<std::string> m_adjuntas;
    std::vector<Recordset*> m_lecturas; ///< recordsets that are being read
    sql::Catalogo m_catalogo;
    sql::Vigencia m_vigencia; ///< of what has been read of the catalogue
    std::map<std::pair<std::string, std::string>, std::vector<std::string>> m_claves; ///< by schema and table
    bool m_en_transaccion = false; ///< also when SQLite has already undone it
};

/// A file as SQLite takes it where addresses are understood, to be opened for `modo`: ro, rw or rwc. It can
/// stand in a statement between quotes.
[[nodiscard]] std::string uri(const std::filesystem::path& fichero, std::string_view modo);

} // namespace atipicos::sqlite
