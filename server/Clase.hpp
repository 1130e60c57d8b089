#pragma once

#include "automation/Componente.hpp"

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

/// How the public classes look from outside: one table of members for each.
namespace atipicos::server {

using namespace automation; // values and results under the names that they have everywhere

class Llamada;

enum class Tipo : std::uint8_t { Nada, Entero, Largo, Moneda, Fecha, Texto, Logico, Objeto };

struct Argumento {
    std::string_view nombre;
    bool opcional = false;
    bool por_referencia = false;
    Tipo tipo = Tipo::Nada; ///< as the function that takes it says
};

/// One member. Its number is its position in the class, from 1 on; that of a default member is 0 as well, and
/// 0 by its name.
struct Miembro {
    std::string_view nombre;
    bool es_metodo = false;
    Tipo tipo = Tipo::Nada; ///< of the result or the property
    std::vector<Argumento> argumentos;
    Argumento asignado{ "valor" }; ///< what the property is set to
    void (*lee)(void* objeto, Llamada& llamada) = nullptr; ///< calls the method or reads the property
    void (*pone)(void* objeto, Llamada& llamada) = nullptr; ///< sets the property to the only argument
};

struct Clase {
    const ClasePublica& publica;
    std::vector<Miembro> miembros;
    std::shared_ptr<void> (*crea)();
    std::size_t por_defecto = 0; ///< number of the member that stands for the object itself; 0: none
    /// Of a collection: its elements from 1 on, and nothing past the last one.
    Valor (*elemento)(void* objeto, std::int32_t posicion) = nullptr;
};

/// The number of the member at a position, from 0 on, as hosts ask for it.
[[nodiscard]] inline DISPID numero_de(const Clase& clase, std::size_t posicion) noexcept
{
    return posicion + 1 == clase.por_defecto ? DISPID{ DISPID_VALUE } : static_cast<DISPID>(posicion) + 1;
}

/// The table of the class `T`; each class has its own specialisation.
template <class T> const Clase& clase_de();

/// All classes that this build serves, in the component's own order.
[[nodiscard]] const std::vector<const Clase*>& clases();

/// Those that open windows, where they were built.
[[nodiscard]] const Clase* clase_con_ventanas(std::string_view nombre);

/// Whether a window of the component is there: then it cannot be unloaded any more.
[[nodiscard]] bool hay_ventanas() noexcept;

} // namespace atipicos::server
