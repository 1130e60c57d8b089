#pragma once

#include "platform/adodb/Connection.hpp"

#include <functional>
#include <memory>
#include <string>

namespace atipicos::app {

/// The management connection, with a statement of the host's own that is run inside the very transaction of a
/// save, right before it commits: what the host remembers of a charge is kept or lost together with it.
class ConexionConAnotacion final : public adodb::Connection {
public:
    explicit ConexionConAnotacion(std::shared_ptr<adodb::Connection> real);

    /// To be done once, before the next commit, when the charge has its code; on the real connection.
    std::function<void(adodb::Connection&)> anotacion;

    void Execute(
        const std::string& sql, std::int32_t* afectadas, adodb::CommandType tipo, Donde donde) override;
    void BeginTrans(Donde donde) override;
    void CommitTrans(Donde donde) override;
    void RollbackTrans(Donde donde) override;
    [[nodiscard]] std::unique_ptr<adodb::Recordset> CreateRecordset() override;

private:
    std::shared_ptr<adodb::Connection> m_real;
};

} // namespace atipicos::app
