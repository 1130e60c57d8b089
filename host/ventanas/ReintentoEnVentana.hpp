#pragma once

#include "host/bases/Bases.hpp"

#include <QDialog>
#include <QPointer>

namespace atipicos::app {

/// A small window over whichever the person works in, while a lost line to the server cannot be opened again:
/// for how long that has been tried, and a button that ends it. It is gone when the line is open, or is given
/// up.
///
/// Whoever asks stands in the middle of an operation: nothing but this window takes keys and clicks
/// meanwhile.
class ReintentoEnVentana {
public:
    ReintentoEnVentana() = default;
    ReintentoEnVentana(const ReintentoEnVentana&) = delete;
    ReintentoEnVentana& operator=(const ReintentoEnVentana&) = delete;
    ~ReintentoEnVentana();

    /// Shows it, or how it stands, and lets the button be pressed; whether to go on trying. See
    /// `sql::SigueIntentando`.
    [[nodiscard]] bool sigue(const sql::Reintento& como);
    void reanudada(); ///< the line is open

private:
    void muestra(std::chrono::milliseconds limite);
    void quita();

    QPointer<QDialog> m_ventana;
};

} // namespace atipicos::app
