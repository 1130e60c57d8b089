#pragma once

#include "host/comprobacion/ClaveAsiento.hpp"
#include "platform/adodb/Connection.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Entries whole, as accounting stores them. Nothing here writes.
namespace atipicos::app {

struct ApunteGuardado {
    std::int32_t linea = 0;
    std::string cuenta;
    std::string concepto_automatico;
    std::string concepto;
    std::string documento;
    std::string departamento;
    Currency debe;
    Currency haber;
    std::int16_t tipo_impuesto = 0;
    Currency porcentaje;
    Currency base;
};

struct RegistroGuardado {
    std::int32_t linea = 0;
    std::int16_t clase = 0;
    std::int16_t indicador = 0;
    std::string documento;
    Currency base;
    std::int16_t tipo = 0;
    Currency cuota;
    Currency total;
};

struct PrevisionGuardada {
    std::int32_t numero = 0;
    std::string cuenta;
    std::string departamento;
    Currency importe;
    std::int16_t tipo_doc = 0;
    Date vencimiento;
    std::string banco;
};

/// An entry with its lines, tax records and forecasts, each in its order.
struct AsientoContabilizado {
    ClaveAsiento clave;
    Date fecha;
    std::vector<ApunteGuardado> apuntes;
    std::vector<RegistroGuardado> registros;
    std::vector<PrevisionGuardada> previsiones;

    [[nodiscard]] Currency debe() const; ///< of all its lines
    [[nodiscard]] Currency haber() const;
    [[nodiscard]] Currency suma_previsiones() const;

    /// The document that its first line names; empty when it has none.
    [[nodiscard]] std::string documento() const;

    /// Whether it is what posting a charge leaves, whole: debtor, income, tax if there is any, supplier and
    /// debtor again, all of the one document, which is the code of a charge.
    [[nodiscard]] bool es_de_un_cargo() const;

    /// The lines of income of such an entry: from the second to this one, 0-based and not included.
    [[nodiscard]] std::size_t fin_de_ingresos() const noexcept;
};

/// All entries of all companies and years in order, a few thousand in memory at a time. Of their lines the
/// concepts and the data of their tax are left out.
void recorre_asientos(
    adodb::Connection& bexmor, const std::function<void(const AsientoContabilizado&)>& cada);

/// One entry with everything that it holds; nothing when there is none.
[[nodiscard]] std::optional<AsientoContabilizado> lee_asiento(
    adodb::Connection& bexmor, const ClaveAsiento& clave);

} // namespace atipicos::app
