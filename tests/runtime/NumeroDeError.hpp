#pragma once

#include "runtime/Error.hpp"

#include <cstdint>
#include <ostream>

namespace atipicos {

/// So that a failed comparison shows the fields.
inline void PrintTo(Donde donde, std::ostream* salida) { *salida << donde.fichero() << ":" << donde.linea(); }

namespace pruebas {

    /// The number of the error that the operation raises; 0 when it raises none.
    template <class Operacion> std::int32_t numero_de_error(Operacion operacion)
    {
        try {
            static_cast<void>(operacion());
            return 0;
        } catch (const Error& error) {
            return error.numero();
        }
    }

    /// The line that the error of the operation names; 0 when it raises none.
    template <class Operacion> std::uint32_t linea_de_error(Operacion operacion)
    {
        try {
            static_cast<void>(operacion());
            return 0;
        } catch (const Error& error) {
            return error.donde().linea();
        }
    }

}
} // namespace atipicos
