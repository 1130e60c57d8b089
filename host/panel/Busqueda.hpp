#pragma once

#include "host/panel/Ambito.hpp"
#include "host/panel/CargoResumido.hpp"
#include "host/panel/LecturaDeCargos.hpp"
#include "runtime/Currency.hpp"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace atipicos::app {

/// What is typed into the search box, taken apart: a code or its beginning, an amount, suppliers.
struct Buscado {
    std::vector<std::string> codigos; ///< beginnings
    std::optional<Currency> importe; ///< base or total
    std::vector<std::int32_t> proveedores;

    [[nodiscard]] bool nada() const { return codigos.empty() && !importe && proveedores.empty(); }
};

/// Finds charges by code, amount or supplier, in a company of any size: suppliers are asked for once, codes
/// by the primary key, the rest first among those of the last months, by the index of the list, and then
/// through the whole table at once.
class Busqueda {
public:
    static constexpr std::size_t maximo = 200; ///< charges found; with more, one types more
    static constexpr std::size_t maximo_proveedores = 60; ///< that a few letters may mean

    explicit Busqueda(const Ambito& ambito); ///< reads the suppliers

    [[nodiscard]] Buscado interpreta(std::string_view tecleado) const;

    /// Tells the charges that are found, some at a time, the newest of each kind first and none twice.
    /// True when there may be more: `maximo` of them were found.
    bool busca(const Buscado& buscado, const Sigue& sigue,
        const std::function<void(std::vector<CargoResumido>)>& halladas) const;

private:
    using Hallazgo = std::function<void(const std::string& condicion, Camino camino)>;

    void por_codigo(const std::string& comienzo, const Sigue& sigue, const Hallazgo& lee) const;
    void por_condicion(const std::string& condicion, const Sigue& sigue, const Hallazgo& lee) const;
    [[nodiscard]] std::optional<Date> ultimo_dia() const;

    Ambito m_ambito;
    std::vector<std::pair<std::int32_t, std::string>> m_proveedores; ///< with their plain names
};

} // namespace atipicos::app
