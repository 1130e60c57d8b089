#include "controls/Tiradores.hpp"

#include <QAccessibleWidget>
#include <QSizeGrip>
#include <QSplitter>

namespace atipicos {

namespace {

    QAccessibleInterface* de_tirador(const QString& /*clase*/, QObject* objeto)
    {
        if (auto* entre_partes = qobject_cast<QSplitterHandle*>(objeto))
            return new QAccessibleWidget(
                entre_partes, QAccessible::Separator, QStringLiteral("Reparto del sitio"));
        if (auto* en_la_esquina = qobject_cast<QSizeGrip*>(objeto))
            return new QAccessibleWidget(
                en_la_esquina, QAccessible::Separator, QStringLiteral("Tamaño de la ventana"));
        return nullptr;
    }

}

void lee_tiradores()
{
    QAccessible::removeFactory(&de_tirador);
    QAccessible::installFactory(&de_tirador);
}

} // namespace atipicos
