#include "controls/qvDispositivo.hpp"

#include "platform/qvoremp/ImpresionCargo.hpp"

#include <QStandardItemModel>

namespace atipicos {

using namespace qvoremp::dispositivo;

qvDispositivo::qvDispositivo(QWidget* parent)
    : QComboBox(parent)
{
    setPlaceholderText(QStringLiteral("(sin elegir)"));
}

void qvDispositivo::Prepara()
{
    clear();
    addItem(QStringLiteral("Impresora"), int{ impresora });
    addItem(QStringLiteral("Pantalla"), int{ pantalla });
    addItem(QStringLiteral("Fichero PDF"), int{ fichero_pdf });
    addItem(QStringLiteral("Correo"), int{ correo });
    addItem(QStringLiteral("Ninguno"), int{ ninguno });
    setCurrentIndex(-1);
}

void qvDispositivo::set_HayImpresoras(bool hay)
{
    const int lugar = findData(int{ impresora });
    auto* filas = qobject_cast<QStandardItemModel*>(model());
    if (lugar < 0 || filas == nullptr)
        return;
    setItemText(lugar, hay ? QStringLiteral("Impresora") : QStringLiteral("Impresora (no hay ninguna)"));
    filas->item(lugar)->setEnabled(hay);
}

std::int16_t qvDispositivo::Codigo() const
{
    return currentIndex() < 0 ? ninguno : static_cast<std::int16_t>(currentData().toInt());
}

void qvDispositivo::set_Codigo(std::int16_t codigo) { setCurrentIndex(findData(int{ codigo })); }

} // namespace atipicos
