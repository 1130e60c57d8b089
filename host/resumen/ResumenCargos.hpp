#pragma once

#include "host/resumen/PeticionResumen.hpp"
#include "runtime/Currency.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace atipicos::app {

/// What some charges come to.
struct Cifras {
    std::int64_t cuantos = 0; ///< charges; by article, lines
    Currency base;
    Currency impuesto;

    [[nodiscard]] Currency total() const { return base + impuesto; } ///< error 6
    Cifras& operator+=(const Cifras& otras); ///< error 6

    friend bool operator==(const Cifras&, const Cifras&) = default;
};

/// The charges of one supplier, month, warehouse or article.
struct GrupoResumen {
    std::int32_t clave = 0; ///< its code; of a month, see `clave_de_mes`
    std::string nombre; ///< as a person is told it
    Cifras ahora;
    Cifras antes; ///< on the same days of the year before
    bool es_resto = false; ///< many of them together, of which none is told apart
};

/// Months in their order: 12 to a year.
[[nodiscard]] std::int32_t clave_de_mes(Date fecha) noexcept;
[[nodiscard]] std::string nombre_de_mes(std::int32_t clave); ///< "enero de 2026"

/// Charges added up by something, the groups in the order in which a person wants to see them: months as they
/// come, everything else by its total, the largest first.
class ResumenCargos {
public:
    /// Groups of the same key are put together. By month there is a group for each month of the range, also
    /// one without charges; of more than ten years, from the first with charges to the last. A group whose
    /// name is empty gets words in its place. Error 6 when a sum does not fit.
    ResumenCargos(const PeticionResumen& peticion, std::vector<GrupoResumen> grupos);

    [[nodiscard]] const PeticionResumen& peticion() const noexcept { return m_peticion; }
    [[nodiscard]] const std::vector<GrupoResumen>& grupos() const noexcept { return m_grupos; }
    [[nodiscard]] const GrupoResumen& total() const noexcept { return m_total; } ///< of all groups

    /// Whether shares of the total mean anything: not where some groups are claimed and others paid back.
    [[nodiscard]] bool con_partes() const noexcept { return m_con_partes; }
    [[nodiscard]] std::optional<Currency> parte(const GrupoResumen& grupo) const; ///< percent of the total
    [[nodiscard]] std::string texto_de_parte(const GrupoResumen& grupo) const;

    /// The first `cuantos` groups and one with the rest, if there is a rest of more than one.
    [[nodiscard]] ResumenCargos primeros(std::size_t cuantos) const;

private:
    void completa_meses();
    void ordena();
    void suma();

    PeticionResumen m_peticion;
    std::vector<GrupoResumen> m_grupos;
    GrupoResumen m_total;
    bool m_con_partes = false;
};

/// What has to be said under the numbers, a sentence each; empty where they speak for themselves.
[[nodiscard]] std::string nota_de(const ResumenCargos& resumen);

/// Percent by which the total of a group has changed since the year before; nothing where there was none.
[[nodiscard]] std::optional<Currency> cambio(const GrupoResumen& grupo);
/// "+12,3 %"; "nuevo" where there were no charges then, "–" where there were none at all.
[[nodiscard]] std::string texto_de_cambio(const GrupoResumen& grupo);

} // namespace atipicos::app
