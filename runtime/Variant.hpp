#pragma once

#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"
#include "runtime/Error.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace atipicos {

struct Nulo { ///< the value of a database column that holds none
    friend constexpr bool operator==(Nulo, Nulo) noexcept = default;
};

/// What can be held by reference in a `Variant`.
class Objeto {
public:
    Objeto() = default;
    Objeto(const Objeto&) = delete;
    Objeto& operator=(const Objeto&) = delete;
    virtual ~Objeto() = default;
};

/// A value whose kind is known at run time: a field of a recordset, a configuration value. Texts are UTF-8.
class Variant {
public:
    using Valor = std::variant<std::monostate, Nulo, bool, std::int32_t, double, Currency, Date, std::string,
        std::shared_ptr<Objeto>>;

    Variant() noexcept = default; ///< empty
    Variant(Nulo) noexcept;
    Variant(bool valor) noexcept;
    Variant(std::int32_t valor) noexcept;
    Variant(double valor) noexcept;
    Variant(Currency valor) noexcept;
    Variant(Date valor) noexcept;
    Variant(std::string valor) noexcept;
    Variant(std::string_view valor);
    Variant(const char* valor);
    Variant(std::shared_ptr<Objeto> valor) noexcept;

    [[nodiscard]] bool es_vacio() const noexcept { return std::holds_alternative<std::monostate>(m_valor); }
    [[nodiscard]] bool es_nulo() const noexcept { return std::holds_alternative<Nulo>(m_valor); }
    [[nodiscard]] const Valor& valor() const noexcept { return m_valor; }

    friend bool operator==(const Variant&, const Variant&) = default;

private:
    Valor m_valor;
};

/// Conversions. Empty counts as 0, False, no date or "". All raise error 94 for null, 13 for what is not
/// such a value, and 6 for what does not fit. Fractions are rounded by the program's one rounding routine;
/// texts are read as display numbers ("1.234,5"), "Verdadero"/"True" and "Falso"/"False" for `CBool`,
/// days, times and both as `Date::texto_regional` writes them for `CDate`.
[[nodiscard]] bool CBool(const Variant& valor, Donde donde = Donde::aqui());
[[nodiscard]] std::int16_t CInt(const Variant& valor, Donde donde = Donde::aqui());
[[nodiscard]] std::int32_t CLng(const Variant& valor, Donde donde = Donde::aqui());
[[nodiscard]] double CDbl(const Variant& valor, Donde donde = Donde::aqui());
[[nodiscard]] Currency CCur(const Variant& valor, Donde donde = Donde::aqui());
[[nodiscard]] Date CDate(const Variant& valor, Donde donde = Donde::aqui());

/// The regional text: "Verdadero", "-12,5", "1234,5" (as many decimals as needed, no thousands),
/// `Date::texto_regional`.
[[nodiscard]] std::string CStr(const Variant& valor, Donde donde = Donde::aqui());

/// The number with which a text begins, read with "." as decimal point and blanks skipped; 0 when it
/// begins with none. "12 abc" gives 12, "1,5" gives 1, "" gives 0. Error 6 when it does not fit.
[[nodiscard]] double Val(std::string_view texto, Donde donde = Donde::aqui());

} // namespace atipicos
