#pragma once

#include "runtime/Error.hpp"

#include <chrono>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace atipicos {

/// A day and a time of day without zone, to the millisecond, counted from 30 December 1899 as the
/// automation date is. Days run from 1 January 100 to 31 December 9999. The default value, midnight of
/// 30 December 1899, means "no date".
class Date {
public:
    using Instante = std::chrono::local_time<std::chrono::milliseconds>;

    constexpr Date() noexcept = default; ///< no date
    constexpr explicit Date(Instante instante) noexcept
        : m_desde_base(instante - base)
    {
    }

    /// The day at midnight, or nothing when the calendar has no such day or it is out of range.
    [[nodiscard]] static std::optional<Date> de_dia(int anio, int mes, int dia) noexcept;

    /// Reads a typed day, strictly `dd/mm/yyyy` (two, two and four digits); nothing when it is anything
    /// else or no day of the calendar.
    [[nodiscard]] static std::optional<Date> de_texto(std::string_view texto) noexcept;

    /// Reads what `texto_regional` writes: a day, a day and a time, or a time alone; nothing when it is
    /// anything else.
    [[nodiscard]] static std::optional<Date> de_texto_regional(std::string_view texto) noexcept;

    /// Days since 30 December 1899 with the time of day as fraction (for negative values the fraction
    /// still counts forward). Error 6 when out of range or not finite.
    [[nodiscard]] static Date de_automatizacion(double dias, Donde donde = Donde::aqui());
    [[nodiscard]] double automatizacion() const noexcept;

    [[nodiscard]] constexpr Instante instante() const noexcept { return base + m_desde_base; }
    [[nodiscard]] int anio() const noexcept;
    [[nodiscard]] int mes() const noexcept; ///< 1 to 12
    [[nodiscard]] int dia() const noexcept; ///< 1 to 31
    [[nodiscard]] std::chrono::milliseconds hora_del_dia() const noexcept; ///< since midnight
    [[nodiscard]] bool tiene_dia() const noexcept; ///< the day is not 30 December 1899
    [[nodiscard]] Date solo_dia() const noexcept; ///< the same day at midnight

    /// The date `dias` days later (earlier when negative). Error 6 when out of range.
    [[nodiscard]] Date mas_dias(std::int32_t dias, Donde donde = Donde::aqui()) const;

    [[nodiscard]] std::string texto() const; ///< the day alone, `dd/mm/yyyy`
    void anexa_texto(std::string& destino) const; ///< appends `texto()`

    /// Regional text: `dd/mm/yyyy`, with ` h:mm:ss` when there is a time of day, and the time alone when
    /// there is no day ("21/11/2026", "21/11/2026 9:05:03", "9:05:03"; no date gives "0:00:00").
    [[nodiscard]] std::string texto_regional() const;

    friend constexpr auto operator<=>(Date, Date) noexcept = default;

private:
    static constexpr Instante base{ std::chrono::local_days{ std::chrono::year{ 1899 } / 12 / 30 } };
    std::chrono::milliseconds m_desde_base{};
};

} // namespace atipicos
