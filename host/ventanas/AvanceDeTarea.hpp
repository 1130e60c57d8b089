#pragma once

#include <QProgressDialog>

namespace atipicos::app {

/// The progress of something that is done piece by piece over a window, which can be given up between two of
/// them. It is shown only when it takes long enough to be read.
class AvanceDeTarea {
public:
    struct Dejada { }; ///< what `paso` raises when the person gives it up

    AvanceDeTarea(const QString& que, std::size_t piezas, QWidget* ventana);

    void paso(); ///< one more is done

private:
    QProgressDialog m_dialogo;
};

} // namespace atipicos::app
