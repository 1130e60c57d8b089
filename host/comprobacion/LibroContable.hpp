#pragma once

#include "platform/adodb/Connection.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the accounting database holds, read for people and for checking. Nothing here writes.
namespace atipicos::app {

struct ClaveAsiento {
    std::int16_t empresa = 0;
    std::int16_t ejercicio = 0;
    std::int32_t numero = 0;

    friend auto operator<=>(const ClaveAsiento&, const ClaveAsiento&) = default;
};

[[nodiscard]] std::string texto(const ClaveAsiento& asiento); ///< "asiento 5 (empresa contable 1, …)"
[[nodiscard]] std::string nombre_corto(const ClaveAsiento& asiento); ///< company, year and number: "1/2026/5"
/// The entry that such a name means; nothing when it is none.
[[nodiscard]] std::optional<ClaveAsiento> de_nombre_corto(std::string_view nombre);

struct ApunteLeido {
    std::int32_t linea = 0;
    std::string cuenta;
    std::string nombre; ///< of the account
    std::string concepto;
    std::string documento;
    std::string departamento;
    Currency debe;
    Currency haber;
};

struct RegistroLeido {
    std::int32_t linea = 0;
    std::string documento;
    Currency base;
    std::int16_t tipo = 0;
    Currency cuota;
    Currency total;
};

struct PrevisionLeida {
    std::int32_t numero = 0;
    std::string cuenta;
    Currency importe;
    std::string tipo_doc; ///< its name, empty for none
    Date vencimiento;
    std::string banco;
};

/// One table row after the other, with the entry that it belongs to, in order of entry and line. The second
/// argument of each limits the reading to one entry.
using Unico = std::optional<ClaveAsiento>;
void lee_asientos(adodb::Connection& bexmor, const std::function<void(const ClaveAsiento&, Date)>& cada,
    const Unico& unico = {});
void lee_apuntes(adodb::Connection& bexmor,
    const std::function<void(const ClaveAsiento&, const ApunteLeido&)>& cada, const Unico& unico = {});
void lee_registros(adodb::Connection& bexmor,
    const std::function<void(const ClaveAsiento&, const RegistroLeido&)>& cada, const Unico& unico = {});
void lee_previsiones(adodb::Connection& bexmor,
    const std::function<void(const ClaveAsiento&, const PrevisionLeida&)>& cada, const Unico& unico = {});

} // namespace atipicos::app
