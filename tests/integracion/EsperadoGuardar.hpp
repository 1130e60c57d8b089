#pragma once

#include "tests/integracion/Banco.hpp"

#include <cstddef>
#include <string>
#include <vector>

/// What must be left of a save when one of its operations fails: the boxes and the rows.
namespace atipicos::pruebas {

inline constexpr auto guardar = "frmCompras_Atipicos:cmdAceptar_Click";
inline constexpr auto asentar = "frmCompras_Atipicos:GenerarAsiento";
inline constexpr auto insertar = "clsAtipico:Insertar";
inline constexpr auto atencion = "¡ Atención !";

/// Where in a save an operation stands.
enum class Fase {
    antes,
    previsiones,
    hasta_codigo,
    asiento,
    borrar,
    escribir,
    confirmar_gestion,
    confirmar_contabilidad
};

[[nodiscard]] Fase fase_de(
    const std::vector<std::string>& dichas, std::size_t n); ///< of operation `n` (0-based)

struct Esperado {
    std::vector<std::string> titulos;
    Estado estado;
};

/// What the save of a new charge by a program must leave when operation `n` (0-based) fails, given the
/// operations of a whole one and the rows before and after it.
[[nodiscard]] Esperado de_uno_nuevo(
    const std::vector<std::string>& dichas, std::size_t n, const Estado& antes, const Estado& despues);

} // namespace atipicos::pruebas
