#include "editor/frmEditor_Comentarios.hpp"

#include "controls/SinComillas.hpp"
#include "controls/Texto.hpp"
#include "ui_frmEditor_Comentarios.h"

#include <QKeyEvent>
#include <QScreen>

#include <utility>

namespace atipicos {

frmEditor_Comentarios::frmEditor_Comentarios(QWidget* parent)
    : Formulario(parent)
    , m_ui(std::make_unique<Ui::frmEditor_Comentarios>())
{
    m_ui->setupUi(this);
    m_ui->txtComent->set_Mayusculas(true);
    connect(m_ui->cmdAceptar, &QPushButton::clicked, this, &frmEditor_Comentarios::cmdAceptar_Click);
    connect(m_ui->cmdCancelar, &QPushButton::clicked, this, &frmEditor_Comentarios::cmdCancelar_Click);
}

frmEditor_Comentarios::~frmEditor_Comentarios() = default;

void frmEditor_Comentarios::set_Conexion(std::shared_ptr<adodb::Connection> conexion) noexcept
{
    m_conexion = std::move(conexion);
}

void frmEditor_Comentarios::set_cEmpresa(std::shared_ptr<qvoremp::Empresa> empresa) noexcept
{
    m_empresa = std::move(empresa);
}

void frmEditor_Comentarios::set_Comentario(const std::string& comentario)
{
    m_comentario = comentario;
    m_ui->txtComent->set_Texto(a_qt(comentario));
    m_ui->txtComent->moveCursor(QTextCursor::End);
}

void frmEditor_Comentarios::cmdAceptar_Click()
{
    m_comentario = de_qt(sin_comillas(m_ui->txtComent->Texto()));
    m_aceptado = true;
    done(Accepted);
}

void frmEditor_Comentarios::cmdCancelar_Click()
{
    m_aceptado = false;
    done(Rejected);
}

void frmEditor_Comentarios::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_F9)
        cmdAceptar_Click();
    else
        Formulario::keyPressEvent(tecla);
}

void frmEditor_Comentarios::showEvent(QShowEvent* evento)
{
    if (!m_cargado)
        Form_Load();
    Formulario::showEvent(evento);
}

void frmEditor_Comentarios::Form_Load()
{
    m_cargado = true;
    m_aceptado = false;
    const QRect pantalla = screen()->geometry();
    const QSize propio = con_marco();
    move(pantalla.left() + (pantalla.width() - propio.width()) / 2,
        pantalla.top() + (pantalla.height() - propio.height()) / 2);
}

/// Before it is shown a window has no frame yet; the one of its owner is like it.
QSize frmEditor_Comentarios::con_marco() const
{
    const QWidget* duena = parentWidget() == nullptr ? this : parentWidget()->window();
    return size() + duena->frameGeometry().size() - duena->size();
}

void frmEditor_Comentarios::done(int resultado)
{
    m_cargado = false;
    Formulario::done(resultado);
}

} // namespace atipicos
