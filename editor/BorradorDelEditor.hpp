#pragma once

#include "editor/EdicionAtipico.hpp"
#include "platform/borrador/Borradores.hpp"

#include <memory>
#include <string>

namespace atipicos {

/// Hands what stands in an editor over to the host, whenever it has changed. Without a host that keeps drafts
/// nothing happens; no error ever leaves it.
class BorradorDelEditor {
public:
    /// The editor has opened, as `de_partida` says: that alone is not worth keeping.
    void Empezar(const Borrador& de_partida) noexcept;

    /// Keeps `ahora`, or nothing where nothing has been keyed in that a person would miss. Returns why it
    /// could not be kept, in words for that person; empty when all is well.
    [[nodiscard]] std::string Guardar(const Borrador& ahora) noexcept;

    void Quitar() noexcept; ///< the charge was saved or given up
    void Dejar() noexcept; ///< the editor closes, and what was kept stays

private:
    [[nodiscard]] bool merece(const Borrador& borrador) const;

    std::unique_ptr<BorradorAbierto> m_abierto;
    Borrador m_de_partida; ///< as the editor opened
    Borrador m_ultimo; ///< as it was last handed over
    bool m_hay = false; ///< the host keeps something
};

/// The lines, the total, and which line is being changed.
void rellena(Borrador& borrador, const EdicionAtipico& edicion);

/// What stands in the entry fields.
[[nodiscard]] LineaBorrador en_borrador(const LineaTecleada& linea);

} // namespace atipicos
