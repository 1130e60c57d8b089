#pragma once

#include <cstdint>
#include <string>

namespace atipicos {

enum class Icono : std::uint8_t { critico, pregunta, exclamacion, informacion };
enum class Botones : std::uint8_t { Aceptar, SiNo };
enum class Respuesta : std::uint8_t { Aceptar, Si, No };

/// A message box as the person sees it.
struct Mensaje {
    std::string texto; ///< lines may be broken by "\r" or "\r\n"
    std::string titulo;
    Icono icono = Icono::informacion;
    Botones botones = Botones::Aceptar;
    Respuesta por_defecto = Respuesta::Aceptar; ///< the button that Enter presses

    friend bool operator==(const Mensaje&, const Mensaje&) = default;
};

/// The one way in which the component informs or asks a person.
class MsgBox {
public:
    MsgBox() = default;
    MsgBox(const MsgBox&) = delete;
    MsgBox& operator=(const MsgBox&) = delete;
    virtual ~MsgBox() = default;

    /// Shows the box and waits for the answer.
    virtual Respuesta mostrar(const Mensaje& mensaje) = 0;
};

} // namespace atipicos
