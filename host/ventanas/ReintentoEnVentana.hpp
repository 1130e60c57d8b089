#pragma once

#include "host/bases/Bases.hpp"
#include "host/ventanas/HastaOtraOrden.hpp"

#include <QDialog>
#include <QPointer>

namespace atipicos::app {

/// A small window over whichever the person works in, while a lost line to the server cannot be opened again:
/// for how long that has been tried, and a button that ends it. It is gone when the line is open, or is given
/// up. Given up it is not shown again before the person gives another order, because one order reads many
/// times: each of those readings tries once and waits for nothing.
///
/// Whoever asks stands in the middle of an operation: nothing but this window takes keys and clicks
/// meanwhile.
class ReintentoEnVentana {
public:
    ReintentoEnVentana() = default;
    ReintentoEnVentana(const ReintentoEnVentana&) = delete;
    ReintentoEnVentana& operator=(const ReintentoEnVentana&) = delete;
    ~ReintentoEnVentana();

    /// Shows it, or how it stands, and lets the button be pressed for a moment; whether to go on trying. See
    /// `sql::SigueIntentando`.
    [[nodiscard]] bool sigue(const sql::Reintento& como);
    void reanudada(); ///< the line is open

private:
    void muestra(std::chrono::milliseconds limite);
    void espera_a_la_persona() const;
    void quita();

    QPointer<QDialog> m_ventana;
    HastaOtraOrden m_dejado;
};

/// Has a session of the windows try to open a lost line again, and show it.
void reintenta_en_ventana(bases::OpcionesBases& opciones);

} // namespace atipicos::app
