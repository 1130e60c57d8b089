#include "demo/Grabacion.hpp"

#include "runtime/Error.hpp"

#include <QAbstractScrollArea>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <iostream>
#include <utility>

namespace atipicos::demo {

namespace {

    constexpr int lo_que_tarda_en_pintarse = 50; ///< milliseconds

    /// Inside something that can be scrolled a part may well be out of sight.
    bool rueda(const QWidget& una)
    {
        for (const auto* donde = una.parentWidget(); donde != nullptr; donde = donde->parentWidget())
            if (qobject_cast<const QAbstractScrollArea*>(donde) != nullptr)
                return true;
        return false;
    }

    bool esta_cortada(const QWidget& una)
    {
        if (const auto* etiqueta = qobject_cast<const QLabel*>(&una))
            return etiqueta->wordWrap() ? etiqueta->height() < etiqueta->heightForWidth(etiqueta->width())
                                        : etiqueta->width() < etiqueta->minimumSizeHint().width();
        return una.visibleRegion().boundingRect() != una.rect()
            || una.width() < una.minimumSizeHint().width();
    }

}

Grabacion::Grabacion(std::filesystem::path carpeta)
    : m_carpeta(std::move(carpeta))
{
}

void Grabacion::captura(QWidget& ventana, const std::string& nombre)
{
    QTest::qWait(lo_que_tarda_en_pintarse);
    const auto fichero = m_carpeta / (std::to_string(++m_numero) + "-" + nombre + ".png");
    if (!ventana.grab().save(QString::fromStdString(fichero.string())))
        throw Error(1, "demostracion", "No se pudo escribir " + fichero.string() + ".");
    std::cout << fichero.string() << '\n';
    mide(ventana, QString::fromStdString(nombre));
}

void Grabacion::mide(QWidget& ventana, const QString& nombre)
{
    const auto sitio = ventana.screen()->availableGeometry().size();
    if (ventana.width() > sitio.width() || ventana.height() > sitio.height())
        m_faltas << QStringLiteral("%1 no cabe en la pantalla: %2 × %3")
                        .arg(nombre)
                        .arg(ventana.width())
                        .arg(ventana.height());
    for (const auto* una : ventana.findChildren<QWidget*>()) {
        const bool se_lee
            = qobject_cast<const QLabel*>(una) != nullptr || qobject_cast<const QPushButton*>(una) != nullptr;
        if (se_lee && una->isVisible() && una->window() == &ventana && !rueda(*una) && esta_cortada(*una))
            m_faltas << QStringLiteral("%1: %2 está cortado").arg(nombre, una->objectName());
    }
}

} // namespace atipicos::demo
