#include "host/ventanas/Apariencia.hpp"

#include "host/ventanas/Estilo.hpp"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QSettings>
#include <QTranslator>

namespace atipicos::app {

namespace {

    constexpr auto clave_del_tema = "tema";

    /// Every text can be read on every background that it stands on: no pair of them under 4.5 to 1.
    struct Colores {
        QColor ventana;
        QColor base;
        QColor alterna;
        QColor boton;
        QColor texto;
        QColor apagado;
        QColor resalte;
        QColor sobre_resalte;
        QColor enlace; ///< and the frame of what has the focus
    };

    QPalette paleta(const Colores& c)
    {
        QPalette p(c.boton, c.ventana);
        for (const auto grupo : { QPalette::Active, QPalette::Inactive, QPalette::Disabled }) {
            const QColor& texto = grupo == QPalette::Disabled ? c.apagado : c.texto;
            p.setColor(grupo, QPalette::Window, c.ventana);
            p.setColor(grupo, QPalette::Base, grupo == QPalette::Disabled ? c.ventana : c.base);
            p.setColor(grupo, QPalette::AlternateBase, c.alterna);
            p.setColor(grupo, QPalette::Button, c.boton);
            p.setColor(grupo, QPalette::ToolTipBase, c.base);
            p.setColor(grupo, QPalette::ToolTipText, c.texto);
            p.setColor(grupo, QPalette::WindowText, texto);
            p.setColor(grupo, QPalette::Text, texto);
            p.setColor(grupo, QPalette::ButtonText, texto);
            p.setColor(grupo, QPalette::PlaceholderText, c.apagado);
            p.setColor(grupo, QPalette::Highlight, c.resalte);
            p.setColor(grupo, QPalette::HighlightedText, c.sobre_resalte);
            p.setColor(grupo, QPalette::Link, c.enlace);
        }
        return p;
    }

    QPalette clara()
    {
        return paleta({ QColor(0xf3, 0xf4, 0xf6), Qt::white, QColor(0xf7, 0xf9, 0xfb),
            QColor(0xe8, 0xea, 0xee), QColor(0x1c, 0x1f, 0x24), QColor(0x62, 0x68, 0x71),
            QColor(0x1f, 0x5f, 0xa8), Qt::white, QColor(0x1f, 0x5f, 0xa8) });
    }

    QPalette oscura()
    {
        return paleta({ QColor(0x31, 0x35, 0x3b), QColor(0x1d, 0x1f, 0x23), QColor(0x25, 0x28, 0x2c),
            QColor(0x43, 0x48, 0x50), QColor(0xe6, 0xe8, 0xeb), QColor(0xb3, 0xb9, 0xc0),
            QColor(0x2f, 0x6f, 0xba), Qt::white, QColor(0x8f, 0xbc, 0xf0) });
    }

    /// The palette that the system gave the program when it started.
    const QPalette& del_sistema()
    {
        static const QPalette primera = QApplication::palette();
        return primera;
    }

    bool es_oscura(const QPalette& p) { return p.color(QPalette::Window).lightness() < 128; }

}

void habla_castellano()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    auto* textos_de_qt = new QTranslator(qApp);
    if (textos_de_qt->load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(textos_de_qt);
}

void aplica_tema(Tema tema)
{
    const bool oscuro = tema == Tema::oscuro || (tema == Tema::sistema && es_oscura(del_sistema()));
    QApplication::setStyle(new Estilo);
    QApplication::setPalette(oscuro ? oscura() : clara());
}

Tema tema_guardado()
{
    const int guardado = QSettings().value(QLatin1String(clave_del_tema)).toInt();
    return guardado == 1 ? Tema::claro : guardado == 2 ? Tema::oscuro : Tema::sistema;
}

void guarda_tema(Tema tema) { QSettings().setValue(QLatin1String(clave_del_tema), static_cast<int>(tema)); }

} // namespace atipicos::app
