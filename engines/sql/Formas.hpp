#pragma once

#include "engines/sql/Reescritura.hpp"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace atipicos::sql {

/// The shapes of the statements that a session has run, each with what its engine keeps for it: so many, then
/// the one that was not used for longest makes room.
///
/// Statements that have one skeleton and differ in a literal that stays in the text have each a shape.
template <class Preparada> class Formas {
public:
    static constexpr std::size_t maximo = 256;
    static constexpr std::size_t maximo_por_familia = 32; ///< shapes of one skeleton

    struct Una {
        Forma forma;
        Preparada preparada{};
    };

    explicit Formas(Numeros numeros)
        : m_esqueleto(numeros)
        , m_numeros(numeros)
    {
    }

    /// The shape of a statement, whose values are `literales()`: both until the next call. Null: it is to be
    /// rewritten and to go as text. Raises the errors of `reescribe`.
    [[nodiscard]] Una* busca(std::string_view sql, const Catalogo& catalogo, Donde donde)
    {
        if (!m_esqueleto.lee(sql))
            return nullptr;
        const auto lugar = m_familias.find(m_esqueleto.texto());
        if (lugar == m_familias.end())
            return estrena(sql, catalogo, donde);
        auto& familia = lugar->second;
        familia.uso = ++m_usos;
        if (familia.sin_forma)
            return nullptr;
        auto* conocida = la_de_estos(familia);
        if (conocida == nullptr) {
            auto plantilla = forma_de(sql, literales(), m_numeros, catalogo, donde);
            return plantilla ? agrega(familia, std::move(plantilla->forma)) : nullptr;
        }
        conocida->uso = m_usos;
        return &conocida->una;
    }

    [[nodiscard]] std::span<const Literal> literales() const noexcept { return m_esqueleto.literales(); }
    [[nodiscard]] std::size_t cuantas() const noexcept { return m_cuantas; }

    void vacia() noexcept ///< when tables are no longer what they were
    {
        m_familias.clear();
        m_cuantas = 0;
    }

private:
    struct Variante {
        std::string quedan; ///< the literals in its text
        Una una;
        std::uint64_t uso = 0;
    };

    /// The statements of one skeleton.
    struct Familia {
        std::vector<Trato> tratos;
        std::vector<std::unique_ptr<Variante>> variantes; ///< where they are, they stay
        std::uint64_t uso = 0;
        bool sin_forma = false;
        bool de_una = false; ///< all literals travel
    };

    struct Resumen {
        using is_transparent = void;
        std::size_t operator()(std::string_view texto) const noexcept
        {
            return std::hash<std::string_view>()(texto);
        }
    };

    Variante* la_de_estos(Familia& familia)
    {
        if (familia.de_una)
            return familia.variantes.front().get();
        junta_los_que_quedan(familia.tratos);
        const auto lugar = std::find_if(familia.variantes.begin(), familia.variantes.end(),
            [&](const auto& una) { return una->quedan == m_quedan; });
        return lugar == familia.variantes.end() ? nullptr : lugar->get();
    }

    void junta_los_que_quedan(const std::vector<Trato>& tratos)
    {
        m_quedan.clear();
        for (std::size_t i = 0; i < tratos.size(); ++i) {
            const auto& literal = literales()[i];
            if (!viaja(tratos[i], literal))
                m_quedan += literal.texto;
            m_quedan += '\1';
        }
    }

    Una* estrena(std::string_view sql, const Catalogo& catalogo, Donde donde)
    {
        auto plantilla = forma_de(sql, literales(), m_numeros, catalogo, donde);
        auto& familia = m_familias.emplace(m_esqueleto.texto(), Familia{}).first->second;
        familia.uso = ++m_usos;
        familia.sin_forma = !plantilla;
        if (familia.sin_forma) {
            cuenta_una_mas();
            return nullptr;
        }
        familia.tratos = std::move(plantilla->tratos);
        familia.de_una = std::all_of(
            familia.tratos.begin(), familia.tratos.end(), [](Trato trato) { return trato == Trato::viaja; });
        junta_los_que_quedan(familia.tratos);
        return agrega(familia, std::move(plantilla->forma));
    }

    Una* agrega(Familia& familia, Forma&& forma)
    {
        if (familia.variantes.size() == maximo_por_familia) {
            familia.variantes.erase(std::min_element(familia.variantes.begin(), familia.variantes.end(),
                [](const auto& a, const auto& b) { return a->uso < b->uso; }));
            --m_cuantas;
        }
        auto& nueva = familia.variantes.emplace_back(std::make_unique<Variante>());
        nueva->quedan = m_quedan;
        nueva->una.forma = std::move(forma);
        nueva->uso = m_usos;
        cuenta_una_mas();
        return &nueva->una;
    }

    /// The family in use is the youngest: it is never the one that goes.
    void cuenta_una_mas()
    {
        if (++m_cuantas <= maximo)
            return;
        const auto vieja = std::min_element(m_familias.begin(), m_familias.end(),
            [](const auto& a, const auto& b) { return a.second.uso < b.second.uso; });
        if (vieja == m_familias.end())
            return;
        m_cuantas -= std::max<std::size_t>(vieja->second.variantes.size(), 1);
        m_familias.erase(vieja);
    }

    Esqueleto m_esqueleto;
    Numeros m_numeros;
    std::unordered_map<std::string, Familia, Resumen, std::equal_to<>> m_familias; ///< by skeleton
    std::string m_quedan; ///< the literals that stay, of the statement just looked for
    std::size_t m_cuantas = 0;
    std::uint64_t m_usos = 0;
};

} // namespace atipicos::sql
