#pragma once

#include "automation/Despacho.hpp"
#include "platform/adodb/Connection.hpp"

namespace atipicos::ado {

/// A connection of the host, reached by the names that an ADO connection has. It stays open and stays the
/// host's.
///
/// Recordsets are asked of the connection itself where it offers `CreateRecordset`, and otherwise, on
/// Windows, of the system as "ADODB.Recordset".
class Connection final : public adodb::Connection {
public:
    explicit Connection(automation::Despacho conexion);

    void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    void BeginTrans(Donde donde = Donde::aqui()) override;
    void CommitTrans(Donde donde = Donde::aqui()) override;
    void RollbackTrans(Donde donde = Donde::aqui()) override;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    [[nodiscard]] const automation::Despacho& anfitrion() const noexcept { return m_conexion; }

private:
    automation::Despacho m_conexion;
};

} // namespace atipicos::ado
