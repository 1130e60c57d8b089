#include "host/ventanas/frmSesion.hpp"

#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "host/bases/Acceso.hpp"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSettings>

#include <algorithm>

namespace atipicos::app {

namespace {

    void llena(QComboBox& combo, const std::vector<orvalin::Ficha>& fichas)
    {
        for (const auto& ficha : fichas)
            combo.addItem(
                QString::number(ficha.Codigo) + QStringLiteral("  ") + a_qt(ficha.Nombre), ficha.Codigo);
    }

    /// Of all users, the one that the login is, but for who may act for others, and who only looks.
    std::vector<orvalin::Ficha> los_que_puede_ser(
        std::vector<orvalin::Ficha> usuarios, const bases::Acceso& acceso)
    {
        if (!acceso.por_otros && acceso.registra)
            std::erase_if(usuarios, [&](const auto& uno) { return uno.Codigo != acceso.usuario; });
        return usuarios;
    }

    void propon(QComboBox& combo, std::int32_t codigo)
    {
        combo.setCurrentIndex(std::max(combo.findData(codigo), 0));
    }

}

frmSesion::frmSesion(
    const std::vector<orvalin::Ficha>& empresas, const std::vector<orvalin::Ficha>& usuarios, QWidget* parent)
    : QDialog(parent)
    , m_empresa(new QComboBox(this))
    , m_usuario(new QComboBox(this))
{
    setWindowTitle(QStringLiteral("Empresa y usuario"));
    m_empresa->setObjectName(QStringLiteral("cboEmpresa"));
    m_usuario->setObjectName(QStringLiteral("cboUsuario"));
    llena(*m_empresa, empresas);
    llena(*m_usuario, usuarios);
    auto* botones = new QDialogButtonBox(this);
    auto* aceptar = botones->addButton(QStringLiteral("&Aceptar"), QDialogButtonBox::AcceptRole);
    aceptar->setObjectName(QStringLiteral("cmdAceptar"));
    aceptar->setDefault(true);
    botones->addButton(QStringLiteral("&Cancelar"), QDialogButtonBox::RejectRole)
        ->setObjectName(QStringLiteral("cmdCancelar"));
    pon_iconos(*this);
    auto* caja = new QFormLayout(this);
    caja->addRow(QStringLiteral("&Empresa:"), m_empresa);
    caja->addRow(QStringLiteral("&Usuario:"), m_usuario);
    caja->addRow(botones);
    connect(botones, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(botones, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

std::int16_t frmSesion::empresa() const
{
    return static_cast<std::int16_t>(m_empresa->currentData().toInt());
}

std::int32_t frmSesion::usuario() const { return m_usuario->currentData().toInt(); }

void frmSesion::elige(std::int16_t empresa, std::int32_t usuario)
{
    propon(*m_empresa, empresa);
    propon(*m_usuario, usuario);
}

std::optional<OpcionesComunes> elige_sesion(const OpcionesVentana& opciones)
{
    OpcionesComunes elegida = opciones.comunes;
    const auto bases = bases::abre_bases(elegida.lugar(), { .solo_lectura = true });
    const orvalin::Catalogos catalogos(bases.orvalin, elegida.empresa);
    const auto empresas = catalogos.empresas();
    const auto usuarios = los_que_puede_ser(catalogos.usuarios(), bases::acceso_de(bases, elegida.lugar()));
    const bool pregunta_empresa = !opciones.empresa_dada && empresas.size() > 1;
    const bool pregunta_usuario = !opciones.usuario_dado && usuarios.size() > 1;
    if (!opciones.empresa_dada && empresas.size() == 1)
        elegida.empresa = static_cast<std::int16_t>(empresas.front().Codigo);
    if (!pregunta_empresa && !pregunta_usuario)
        return elegida;

    QSettings ajustes;
    frmSesion dialogo(empresas, usuarios);
    dialogo.elige(opciones.empresa_dada
            ? elegida.empresa
            : static_cast<std::int16_t>(ajustes.value(QStringLiteral("empresa"), 1).toInt()),
        opciones.usuario_dado ? elegida.usuario : ajustes.value(QStringLiteral("usuario")).toInt());
    if (dialogo.exec() != QDialog::Accepted)
        return std::nullopt;
    elegida.empresa = dialogo.empresa();
    elegida.usuario = dialogo.usuario();
    ajustes.setValue(QStringLiteral("empresa"), elegida.empresa);
    ajustes.setValue(QStringLiteral("usuario"), elegida.usuario);
    return elegida;
}

} // namespace atipicos::app
