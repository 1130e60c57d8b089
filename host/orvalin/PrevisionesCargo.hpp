#pragma once

#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/Empresa.hpp"
#include "platform/qvoremp/PrevisionesCargo.hpp"

#include <memory>

namespace atipicos::orvalin {

/// The forecasts of the charges of one company, read through the management connection, to which accounting
/// is attached.
class PrevisionesCargo final : public qvoremp::PrevisionesCargo {
public:
    PrevisionesCargo(
        std::shared_ptr<adodb::Connection> conexion, std::shared_ptr<const qvoremp::Empresa> empresa);

    [[nodiscard]] std::vector<qvoremp::PrevisionCargo> lee(std::int16_t ejercicio, std::int16_t almacen,
        const std::string& codigo, Donde donde = Donde::aqui()) const override;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    std::shared_ptr<const qvoremp::Empresa> m_empresa;
};

} // namespace atipicos::orvalin
