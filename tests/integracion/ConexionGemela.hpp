#pragma once

#include "platform/adodb/Connection.hpp"

#include <memory>
#include <string>

namespace atipicos::pruebas {

/// Two connections to two databases that began equal, as one: whatever is done is done with both, and both
/// must answer the same, row for row and error for error. The test fails where they do not. What is given
/// back is the answer of the first.
class ConexionGemela final : public adodb::Connection {
public:
    ConexionGemela(std::shared_ptr<adodb::Connection> una, std::shared_ptr<adodb::Connection> otra);

    void Execute(const std::string& sql, std::int32_t* afectadas = nullptr,
        adodb::CommandType tipo = adodb::CommandType::Text, Donde donde = Donde::aqui()) override;
    void BeginTrans(Donde donde = Donde::aqui()) override;
    void CommitTrans(Donde donde = Donde::aqui()) override;
    void RollbackTrans(Donde donde = Donde::aqui()) override;
    std::unique_ptr<adodb::Recordset> CreateRecordset() override;

private:
    std::shared_ptr<adodb::Connection> m_una;
    std::shared_ptr<adodb::Connection> m_otra;
};

} // namespace atipicos::pruebas
