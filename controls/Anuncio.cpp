#include "controls/Anuncio.hpp"

#include <QAccessibleWidget>
#include <QComboBox>
#include <QLabel>
#include <QVariant>

namespace atipicos {

namespace {

    constexpr const char* propiedad
        = "anuncio"; ///< of a label that is announced: what is said before its text

    class EtiquetaAnunciada final : public QAccessibleWidget {
    public:
        explicit EtiquetaAnunciada(QLabel& etiqueta)
            : QAccessibleWidget(&etiqueta, papel(etiqueta))
            , m_etiqueta(etiqueta)
        {
        }

        [[nodiscard]] QString text(QAccessible::Text cual) const override
        {
            if (cual != QAccessible::Name)
                return QAccessibleWidget::text(cual);
            const QString nombre = m_etiqueta.property(propiedad).toString();
            return nombre.isEmpty() ? m_etiqueta.text() : nombre + QStringLiteral(": ") + m_etiqueta.text();
        }

    private:
        static QAccessible::Role papel(const QLabel& etiqueta)
        {
            return etiqueta.property(propiedad).toString().isEmpty() ? QAccessible::Notification
                                                                     : QAccessible::StaticText;
        }

        const QLabel& m_etiqueta;
    };

    QAccessibleInterface* de_etiqueta(const QString& /*clase*/, QObject* objeto)
    {
        auto* etiqueta = qobject_cast<QLabel*>(objeto);
        return etiqueta != nullptr && etiqueta->property(propiedad).isValid()
            ? new EtiquetaAnunciada(*etiqueta)
            : nullptr;
    }

}

void anuncia(QLabel& etiqueta, const QString& nombre)
{
    static const bool instalada = [] {
        QAccessible::installFactory(&de_etiqueta);
        return true;
    }();
    static_cast<void>(instalada);
    etiqueta.setProperty(propiedad, nombre);
    // One that has been asked for before, as for its first text, would stay as it was made.
    if (auto* anterior = QAccessible::queryAccessibleInterface(&etiqueta))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(anterior));
}

void etiqueta_para_leer(QComboBox& lista)
{
    auto* etiqueta = new QLabel(lista.accessibleName(), lista.parentWidget());
    etiqueta->setBuddy(&lista);
    etiqueta->hide();
}

} // namespace atipicos
