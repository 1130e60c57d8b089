#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace atipicos {

/// The place in the source at which something was asked for. It travels as a defaulted last
/// argument, so that an error raised far below names the line of the procedure that asked.
///
/// Same idea as `std::source_location`, which Clang 14 does not offer with libstdc++ 12.
class Donde {
public:
    constexpr Donde() noexcept = default; ///< unknown: line 0

    [[nodiscard]] static constexpr Donde aqui(
        std::uint32_t linea = __builtin_LINE(), const char* fichero = __builtin_FILE()) noexcept
    {
        Donde donde;
        donde.m_linea = linea;
        donde.m_fichero = fichero;
        return donde;
    }

    [[nodiscard]] constexpr std::uint32_t linea() const noexcept { return m_linea; } ///< 1-based; 0 unknown
    [[nodiscard]] constexpr const char* fichero() const noexcept { return m_fichero; }

private:
    std::uint32_t m_linea = 0;
    const char* m_fichero = "";
};

/// Numbers of the run-time errors that the component can raise.
namespace numero_error {
    inline constexpr std::int32_t argumento_no_valido = 5;
    inline constexpr std::int32_t desbordamiento = 6;
    inline constexpr std::int32_t memoria_insuficiente = 7;
    inline constexpr std::int32_t division_por_cero = 11;
    inline constexpr std::int32_t tipos_no_coinciden = 13;
    inline constexpr std::int32_t error_interno = 51;
    inline constexpr std::int32_t objeto_no_establecido = 91;
    inline constexpr std::int32_t nulo_no_valido = 94;
}

/// An error as the component and its host see it: number, source, Spanish description (UTF-8),
/// and the place that the error box names.
class Error : public std::exception {
public:
    Error(std::int32_t numero, std::string fuente, std::string descripcion, Donde donde = Donde::aqui());

    /// A run-time error with its standard Spanish text and the source "QVORComprasAtip".
    [[nodiscard]] static Error de_ejecucion(std::int32_t numero, Donde donde = Donde::aqui());

    [[nodiscard]] std::int32_t numero() const noexcept { return m_numero; }
    [[nodiscard]] const std::string& fuente() const noexcept { return m_fuente; }
    [[nodiscard]] const std::string& descripcion() const noexcept { return m_descripcion; }
    [[nodiscard]] Donde donde() const noexcept { return m_donde; }
    [[nodiscard]] const char* what() const noexcept override { return m_descripcion.c_str(); }

private:
    std::int32_t m_numero;
    std::string m_fuente;
    std::string m_descripcion;
    Donde m_donde;
};

} // namespace atipicos
