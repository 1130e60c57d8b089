#include "controls/MsgBoxQt.hpp"

#include "controls/Texto.hpp"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

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
    caja.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

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
