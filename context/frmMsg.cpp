#include "context/frmMsg.hpp"

#include "controls/Texto.hpp"
#include "controls/Twips.hpp"
#include "ui_frmMsg.h"

#include <QFontMetrics>
#include <QStyle>

namespace atipicos {

namespace {

    constexpr int margenes = 2500; ///< twips, with the picture

}

frmMsg::frmMsg(QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , m_ui(std::make_unique<Ui::frmMsg>())
{
    m_ui->setupUi(this);
    m_por_defecto = m_ui->lblMsg->text();
    setAttribute(Qt::WA_ShowWithoutActivating);
    const QFont negrita(QStringLiteral("MS Sans Serif"), 8, QFont::Bold);
    m_ui->lblMsg->setFont(negrita);
    const int icono = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    m_ui->Image1->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxInformation).pixmap(icono));
    RefreshMsg();
    setFixedHeight(layout()->totalHeightForWidth(width())); // for its own text, at the narrowest: it stays so
}

frmMsg::~frmMsg() = default;

void frmMsg::Show()
{
    RefreshMsg();
    show();
}

void frmMsg::Vacia()
{
    Mensaje.clear();
    m_ui->lblMsg->setText(m_por_defecto);
    RefreshMsg();
}

void frmMsg::RefreshMsg()
{
    const QString texto = a_qt(Mensaje);
    if (!texto.isEmpty())
        m_ui->lblMsg->setText(texto);
    setFixedWidth(m_ui->lblMsg->fontMetrics().horizontalAdvance(texto) + twips_a_pixeles(margenes, *this));
    m_ui->lblMsg->repaint();
}

} // namespace atipicos
