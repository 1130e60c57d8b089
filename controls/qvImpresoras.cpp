#include "controls/qvImpresoras.hpp"

#include "controls/Texto.hpp"

#include <QPrinterInfo>

#include <algorithm>

namespace atipicos {

qvImpresoras::qvImpresoras(QWidget* parent)
    : QComboBox(parent)
{
    setMinimumContentsLength(28);
}

void qvImpresoras::Prepara()
{
    Prepara(QPrinterInfo::availablePrinterNames(), QPrinterInfo::defaultPrinterName());
}

void qvImpresoras::Prepara(const QStringList& impresoras, const QString& predeterminada)
{
    clear();
    m_hay = !impresoras.isEmpty();
    setEnabled(m_hay);
    addItems(m_hay ? impresoras : QStringList(QStringLiteral("No hay impresoras en este sistema")));
    setCurrentIndex(std::max(findText(predeterminada), 0));
}

std::string qvImpresoras::Nombre() const { return m_hay ? de_qt(currentText()) : std::string(); }

void qvImpresoras::set_Nombre(const std::string& nombre)
{
    if (const int lugar = m_hay ? findText(a_qt(nombre)) : -1; lugar >= 0)
        setCurrentIndex(lugar);
}

std::int16_t qvImpresoras::Ajuste() const
{
    return m_hay ? static_cast<std::int16_t>(currentIndex() + 1) : std::int16_t{ 0 };
}

} // namespace atipicos
