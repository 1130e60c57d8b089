#pragma once

#include "charges/clsAtipico_Linea.hpp"
#include "runtime/Error.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace atipicos {

/// The lines of a charge, in order, reached by position from 1 on. A line stays valid for whoever holds
/// it, also after it has left the collection.
class clsAtipico_Lineas {
public:
    using Linea = std::shared_ptr<clsAtipico_Linea>;

    [[nodiscard]] std::int32_t Count() const;

    /// Removes the line at `intIndex` (1 to `Count`, else error 5); later lines move up by one.
    void Remove(std::int16_t intIndex, Donde donde = Donde::aqui());

    /// Adds a new line with these values and returns it. It goes right after position `intPosicion`
    /// (1 to `Count`, else error 5), or to the end when that is 0.
    Linea Add(std::int32_t lngCod_Articulo = 0, const std::string& strDescripcion = {},
        Currency curUnidades = {}, Currency curPrecio = {}, const std::string& strObservaciones = {},
        std::int32_t lngId = 0, std::int16_t intPosicion = 0, Donde donde = Donde::aqui());

    void AddByClass(const clsAtipico_Linea& clsLinea); ///< appends a copy, with its `NumLinea`
    void Clear();

    /// The line at `intIndex` itself, not a copy (1 to `Count`, else error 5).
    [[nodiscard]] Linea Item(std::int16_t intIndex, Donde donde = Donde::aqui()) const;

    /// A new collection with copies of all lines. Error 6 beyond 32767 lines, the last position there is.
    [[nodiscard]] std::shared_ptr<clsAtipico_Lineas> Clone(Donde donde = Donde::aqui()) const;

    /// The last position, as the loops over positions count. Error 6 beyond 32767.
    [[nodiscard]] std::int16_t UltimaPosicion(Donde donde = Donde::aqui()) const;

private:
    [[nodiscard]] std::size_t indice(std::int16_t posicion, Donde donde) const;

    std::vector<Linea> m_lineas;
};

} // namespace atipicos
