#pragma once

#include "host/fichas/Escritura.hpp"

#include <optional>
#include <vector>

namespace atipicos::app {

struct FichaDeArticulo {
    std::int32_t codigo = 0;
    std::string nombre = {};
    std::string cuenta_ingresos = {}; ///< empty: that of the warehouse

    friend bool operator==(const FichaDeArticulo&, const FichaDeArticulo&) = default;
};

/// The articles of a company. What they refuse is an `Error` that says why, and then nothing has changed.
class Articulos {
public:
    explicit Articulos(AmbitoDeFichas ambito);

    [[nodiscard]] std::vector<FichaDeArticulo> todos() const; ///< in order of code
    [[nodiscard]] std::optional<FichaDeArticulo> lee(std::int32_t codigo) const;
    [[nodiscard]] std::int32_t libre() const; ///< a code that nobody has

    /// Adds it, or changes the one of that code. True: it was added.
    bool guarda(const FichaDeArticulo& ficha) const;
    /// Refused when there is none, or a charge names it.
    void elimina(std::int32_t codigo) const;

private:
    [[nodiscard]] std::vector<FichaDeArticulo> lee_donde(const std::string& condicion) const;
    [[nodiscard]] std::string clave(std::int32_t codigo) const;

    AmbitoDeFichas m_ambito;
};

} // namespace atipicos::app
