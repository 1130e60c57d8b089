#pragma once

#include "host/ventanas/frmManual.hpp"
#include "host/ventanas/VistaManual.hpp"
#include "tests/support/Persona.hpp"

#include <QUrl>

namespace atipicos::pruebas {

/// The window of the manual, when it is open.
inline app::frmManual* abierto()
{
    for (QWidget* una : QApplication::topLevelWidgets())
        if (auto* manual = qobject_cast<app::frmManual*>(una); manual != nullptr && manual->isVisible())
            return manual;
    return nullptr;
}

/// What is read in it, as a link has it; empty when it is not open.
inline QString se_lee()
{
    auto* manual = abierto();
    if (manual == nullptr)
        return {};
    const QUrl url = control<app::VistaManual>(*manual, "vistaManual").source();
    return url.fileName() + (url.hasFragment() ? u'#' + url.fragment(QUrl::FullyDecoded) : QString());
}

} // namespace atipicos::pruebas
