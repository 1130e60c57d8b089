#pragma once

#include "engines/odbc/Enlace.hpp"
#include "engines/sql/Reescritura.hpp"
#include "engines/sql/Vigencia.hpp"
#include "platform/adodb/Connection.hpp"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace atipicos::odbc {

/// A connection through an ODBC driver. SQL Server gets the statements as they are; other products, told
/// apart by the name that the driver gives, get them rewritten.
///
/// A transaction that the product has undone by itself after an error stays refused until it is rolled back.
/// A lost connection is opened again between transactions: by a query or the beginning of a transaction that
/// finds it lost, or by the operation after the one that was told so.
///
/// Only one thread at a time may use a connection and its recordsets.
class Connection final : public adodb::Connection {
public:
    [[nodiscard]] static std::shared_ptr<Connection> Abrir(
        const Opciones& opciones, Donde donde = Donde::aqui());

    void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    void BeginTrans(Donde donde = Donde::aqui()) override;
    void CommitTrans(Donde donde = Donde::aqui()) override;
    void RollbackTrans(Donde donde = Donde::aqui()) override;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    /// The statement as this product wants it.
    [[nodiscard]] std::string reescribe(const std::string& sql, Donde donde);
    /// Runs a statement written as the product wants it, and undoes what a failing one has done.
    Respuesta ejecuta(const std::string& sql, Donde donde);
    /// The same for a query whose rows are to stay locked until the transaction ends. The lock holds others
    /// off also when there is no row yet: of two that mean to add it the second one waits, and finds it.
    [[nodiscard]] Respuesta pide_bloqueando(const std::string& sql, Donde donde);
    /// The columns of a table's primary key; asked of the driver once.
    [[nodiscard]] const std::vector<std::string>& columnas_clave(const std::string& tabla, Donde donde);

    /// Makes true and false of the small numbers that were declared BIT.
    void vuelve_bits(Respuesta& respuesta) const;

    [[nodiscard]] const Servidor& servidor() const noexcept { return m_enlace.servidor(); }
    [[nodiscard]] bool en_transaccion() const noexcept { return m_en_transaccion; }

private:
    Connection(const Opciones& opciones, Donde donde);
    Respuesta ejecuta_protegida(const std::string& sql, Donde donde);
    Respuesta ejecuta_sola(const std::string& sql, Donde donde);
    void lee_catalogo(Donde donde);
    void asegura_enlace(const std::string& sql, Donde donde);
    void repara() noexcept; ///< after one that failed in a transaction: finds out what is left of that
    [[nodiscard]] bool sigue_viva(); ///< undoes the failed statement; false when all of it is undone
    void comprueba_transaccion(const char* instruccion, Donde donde) const; ///< that one is open

    Enlace m_enlace;
    sql::Catalogo m_catalogo;
    sql::Vigencia m_vigencia; ///< of what has been read of the catalogue
    std::map<std::string, std::vector<std::string>> m_claves; ///< by table
    std::set<std::pair<std::string, std::string>>
        m_bits; ///< BIT columns that the driver does not know as such
    bool m_en_transaccion = false; ///< also when it is lost
    bool m_transaccion_perdida = false;
};

} // namespace atipicos::odbc
