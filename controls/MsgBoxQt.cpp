#include "controls/MsgBoxQt.hpp"

#include "controls/Explicacion.hpp"
#include "controls/Texto.hpp"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace atipicos {

namespace {

    QMessageBox::Icon icono_de(Icono icono)
    {
        switch (icono) {
        case Icono::critico:
            return QMessageBox::Critical;
        case Icono::pregunta:
            return QMessageBox::Question;
        case Icono::exclamacion:
            return QMessageBox::Warning;
        case Icono::informacion:
            break;
        }
        return QMessageBox::Information;
    }

    QString con_saltos_de_linea(const std::string& texto)
    {
        QString resultado = a_qt(texto);
        resultado.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        return resultado.replace(u'\r', u'\n');
    }

    /// A box is as wide as its text: a title that is longer would be cut by the window's frame.
    void haz_sitio_al_titulo(QMessageBox& caja)
    {
        auto* rejilla = qobject_cast<QGridLayout*>(caja.layout());
        if (rejilla == nullptr)
            return;
        constexpr int botones_del_marco = 160;
        QFont negrita = caja.font(); // frames that write in bold need the most
        negrita.setBold(true);
        const int ancho = QFontMetrics(negrita).horizontalAdvance(caja.windowTitle()) + botones_del_marco;
        rejilla->addItem(
            new QSpacerItem(ancho, 0), rejilla->rowCount(), 0, 1, std::max(rejilla->columnCount(), 1));
    }

}

Respuesta MsgBoxQt::mostrar(const Mensaje& mensaje)
{
    QMessageBox caja(QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget()
                                                                  : QApplication::activeWindow());
    caja.setObjectName(QStringLiteral("MsgBox"));
    caja.setIcon(icono_de(mensaje.icono));
    caja.setWindowTitle(a_qt(mensaje.titulo));
    caja.setTextFormat(Qt::PlainText); // a "<" in a name is a "<"
    caja.setText(con_saltos_de_linea(mensaje.texto));
    caja.setInformativeText(explicacion_de(caja.text()));
    caja.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    haz_sitio_al_titulo(caja);

    if (mensaje.botones == Botones::Aceptar) {
        caja.setDefaultButton(caja.addButton(QStringLiteral("&Aceptar"), QMessageBox::AcceptRole));
        caja.exec();
        return Respuesta::Aceptar;
    }
    auto* si = caja.addButton(QStringLiteral("&Sí"), QMessageBox::YesRole);
    auto* no = caja.addButton(QStringLiteral("&No"), QMessageBox::NoRole);
    caja.setDefaultButton(mensaje.por_defecto == Respuesta::Si ? si : no);
    caja.setEscapeButton(no);
    caja.exec();
    return caja.clickedButton() == si ? Respuesta::Si : Respuesta::No;
}

} // namespace atipicos
