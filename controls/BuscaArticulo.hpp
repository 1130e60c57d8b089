#pragma once

#include "platform/adodb/Connection.hpp"
#include "platform/qvoremp/Empresa.hpp"

#include <memory>
#include <optional>
#include <string>

namespace atipicos {

/// Looks an article of the company up by its code, for whoever needs more than its name.
class BuscaArticulo {
public:
    BuscaArticulo(std::shared_ptr<adodb::Connection> conexion, std::shared_ptr<qvoremp::Empresa> empresa);

    /// The atypical-income account of the article, empty when it has none; nothing when there is no such
    /// article.
    [[nodiscard]] std::optional<std::string> CtaAtipicos(
        std::int32_t codigo, Donde donde = Donde::aqui()) const;

private:
    std::shared_ptr<adodb::Connection> m_conexion;
    std::shared_ptr<qvoremp::Empresa> m_empresa;
};

} // namespace atipicos
