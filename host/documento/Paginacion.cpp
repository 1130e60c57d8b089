#include "host/documento/Paginacion.hpp"

#include <utility>

namespace atipicos::orvalin {

namespace {

    /// How far the page being filled is filled.
    struct Llenado {
        Medida y = 0;
        std::size_t tabla = sin_tabla; ///< whose column heads are in force
        bool vacia = true;
    };

    class Reparto {
    public:
        explicit Reparto(const Papel& papel)
            : m_papel(papel)
        {
        }

        void coloca(const Bloque& bloque)
        {
            if (!m_llenado.vacia && !cabe(bloque, m_llenado) && cabe(bloque, Llenado(), m_papel.resto))
                pagina_nueva();
            for (const auto& tira : bloque)
                coloca(tira);
        }

        [[nodiscard]] std::vector<PaginaRepartida> paginas() && { return std::move(m_paginas); }

    private:
        [[nodiscard]] Medida disponible() const
        {
            return m_paginas.size() == 1 ? m_papel.primera : m_papel.resto;
        }

        [[nodiscard]] bool lleva_cabecera(const Tira& tira, const Llenado& llenado) const
        {
            return tira.tabla != sin_tabla && tira.tabla != llenado.tabla;
        }

        /// The page as it is when `tira` has been put on it.
        [[nodiscard]] Llenado con(const Tira& tira, const Llenado& llenado) const
        {
            const auto separacion = llenado.vacia ? 0 : tira.separacion;
            const auto cabecera = lleva_cabecera(tira, llenado) ? m_papel.cabeceras.at(tira.tabla) : 0;
            return { llenado.y + separacion + cabecera + tira.alto, tira.tabla, false };
        }

        [[nodiscard]] bool cabe(const Bloque& bloque, Llenado llenado, Medida hasta) const
        {
            for (const auto& tira : bloque)
                llenado = con(tira, llenado);
            return llenado.y <= hasta;
        }
        [[nodiscard]] bool cabe(const Bloque& bloque, const Llenado& llenado) const
        {
            return cabe(bloque, llenado, disponible());
        }

        void coloca(const Tira& tira)
        {
            if (!m_llenado.vacia && con(tira, m_llenado).y > disponible())
                pagina_nueva();
            const auto cabecera = lleva_cabecera(tira, m_llenado) ? tira.tabla : sin_tabla;
            m_llenado = con(tira, m_llenado);
            m_paginas.back().push_back({ m_siguiente++, m_llenado.y - tira.alto, cabecera });
        }

        void pagina_nueva()
        {
            m_paginas.emplace_back();
            m_llenado = {};
        }

        const Papel& m_papel;
        std::vector<PaginaRepartida> m_paginas{ 1 };
        Llenado m_llenado;
        std::size_t m_siguiente = 0;
    };

}

std::vector<PaginaRepartida> reparte(const std::vector<Bloque>& bloques, const Papel& papel)
{
    Reparto reparto(papel);
    for (const auto& bloque : bloques)
        reparto.coloca(bloque);
    return std::move(reparto).paginas();
}

} // namespace atipicos::orvalin
