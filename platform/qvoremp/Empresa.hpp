#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Error.hpp"
#include "runtime/Variant.hpp"

#include <cstdint>
#include <string>
#include <string_view>

/// The company library of the management product, as far as the component uses it.
namespace atipicos::qvoremp {

/// The management company that the host works with. Every member may raise an `Error` of the library.
class Empresa {
public:
    Empresa() = default;
    Empresa(const Empresa&) = delete;
    Empresa& operator=(const Empresa&) = delete;
    virtual ~Empresa() = default;

    [[nodiscard]] virtual std::int16_t Codigo(Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::string Nombre(Donde donde = Donde::aqui()) const = 0;

    /// The value of a configuration key; what an absent key gives is the library's business.
    [[nodiscard]] virtual Variant Parametro(std::string_view clave, Donde donde = Donde::aqui()) const = 0;

    /// The rate of a tax type, in percent.
    [[nodiscard]] virtual Currency PorcentajeImpuesto(
        std::int16_t tipo, Donde donde = Donde::aqui()) const = 0;

    [[nodiscard]] virtual int DecimalesImporte(Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual int DecimalesCosto(Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual int DecimalesPrecio(Donde donde = Donde::aqui()) const = 0;

    [[nodiscard]] virtual std::int16_t AlmacenDefecto(Donde donde = Donde::aqui()) const = 0;

    /// 1: saved charges are posted to accounting.
    [[nodiscard]] virtual std::int32_t EnlaceContable(Donde donde = Donde::aqui()) const = 0;

    /// The company under which suppliers are kept; it may differ from `Codigo`.
    [[nodiscard]] virtual std::int16_t EmpresaProveedores(Donde donde = Donde::aqui()) const = 0;

    /// The root of the plan of accounts under which suppliers stand (for instance 400).
    [[nodiscard]] virtual std::int32_t RaizProveedores(Donde donde = Donde::aqui()) const = 0;
};

} // namespace atipicos::qvoremp
