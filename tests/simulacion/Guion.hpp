#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// What several clerks do, one step after the other, as a script that can be written down and run again.
namespace atipicos::pruebas {

enum class Accion : std::uint8_t {
    linea, ///< keys in a line
    cambia, ///< takes a line back and keys it in anew
    quita, ///< removes a line
    comenta, ///< writes the long observations of a line
    cancela, ///< drops the charge being keyed in
    guarda, ///< accepts the charge and its forecasts
    renuncia, ///< accepts the charge and gives up at the forecasts
    abre, ///< opens a stored charge to change it
    elimina, ///< deletes a stored charge
    lista, ///< lists the charges of a month
    detalle, ///< looks at the lines of a stored charge
    imprime, ///< prints a stored charge
    pierde, ///< the connection of the clerk's next save or deletion will break
};

/// One step: who does what, and three numbers by which everything in it is chosen. A step means something
/// whatever came before it, so that a script stays one when steps are taken out.
struct Paso {
    Accion accion = Accion::linea;
    std::size_t quien = 0;
    std::uint32_t a = 0;
    std::uint32_t b = 0;
    std::uint32_t c = 0;
};
using Guion = std::vector<Paso>;

inline constexpr std::size_t oficinistas = 4;

[[nodiscard]] Guion genera(std::uint32_t semilla, std::size_t pasos); ///< the same for the same seed
[[nodiscard]] std::string texto(const Paso& paso); ///< "guarda 2 17 4 99"
[[nodiscard]] std::string texto(const Guion& guion); ///< one step a line

/// The shortest script that can be had from `guion` by taking steps out and that still `falla`.
[[nodiscard]] Guion reduce(Guion guion, const std::function<bool(const Guion&)>& falla);

} // namespace atipicos::pruebas
