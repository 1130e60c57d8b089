#include "host/ventanas/frmDatosEmpresa.hpp"

#include "controls/Anuncio.hpp"
#include "controls/Avance.hpp"
#include "controls/ColorDeAviso.hpp"
#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "runtime/Formato.hpp"

#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

namespace atipicos::app {

namespace {

    // As long as their columns.
    constexpr int de_nombre = 60;
    constexpr int de_nif = 15;
    constexpr int de_domicilio = 80;
    constexpr int de_codigo_postal = 10;
    constexpr int de_poblacion = 60;
    constexpr int de_impuesto = 20;
    constexpr int de_porcentaje = 6;
    const auto porcentaje_maximo = Currency::de_entero(100);

    std::string tecleado_en(const QLineEdit* caja) { return de_qt(caja->text().trimmed()); }

    /// Nothing when it is no percentage.
    std::optional<Currency> porcentaje_de(const QString& tecleado)
    {
        try {
            const auto valor = lee_pantalla(de_qt(tecleado));
            if (valor >= Currency() && valor <= porcentaje_maximo)
                return valor;
        } catch (const Error&) {
            return std::nullopt; // it is no number
        }
        return std::nullopt;
    }

}

frmDatosEmpresa::frmDatosEmpresa(QWidget* parent)
    : Formulario(parent)
    , m_falta(new QLabel(this))
{
    setObjectName(QStringLiteral("frmDatosEmpresa"));
    setWindowTitle(QStringLiteral("Datos de la empresa"));
    auto* caja = new QVBoxLayout(this);
    auto* empresa = new QGroupBox(QStringLiteral("La empresa"), this);
    hace_empresa(*new QFormLayout(empresa));
    auto* proveedor = new QGroupBox(QStringLiteral("El primer proveedor al que se reclama"), this);
    hace_proveedor(*new QFormLayout(proveedor));
    m_falta->setObjectName(QStringLiteral("lblFalta"));
    m_falta->setWordWrap(true);
    anuncia(*m_falta);
    auto* aceptar = new QPushButton(QStringLiteral("&Aceptar"), this);
    auto* cancelar = new QPushButton(QStringLiteral("&Cancelar"), this);
    aceptar->setObjectName(QStringLiteral("cmdAceptar"));
    cancelar->setObjectName(QStringLiteral("cmdCancelar"));
    auto* botones = new QHBoxLayout;
    botones->addStretch(1);
    aceptar->setAutoDefault(false); // Enter moves on
    cancelar->setAutoDefault(false);
    botones->addWidget(aceptar);
    botones->addWidget(cancelar);
    auto* uno_al_lado_del_otro = new QHBoxLayout; // on a small screen there is no room below each other
    uno_al_lado_del_otro->addWidget(empresa);
    uno_al_lado_del_otro->addWidget(proveedor);
    caja->addLayout(uno_al_lado_del_otro);
    caja->addWidget(m_falta);
    caja->addLayout(botones);
    pon_iconos(*this);
    connect(aceptar, &QPushButton::clicked, this, &frmDatosEmpresa::acepta);
    connect(cancelar, &QPushButton::clicked, this, &QDialog::reject);
    resize(fontMetrics().averageCharWidth() * 130, sizeHint().height());
    m_nombre->setFocus();
}

QLineEdit* frmDatosEmpresa::agrega(QFormLayout& caja, const char* nombre, const QString& titulo, int maximo)
{
    auto* campo = new QLineEdit(this);
    campo->setObjectName(QLatin1String(nombre));
    campo->setMaxLength(maximo);
    caja.addRow(titulo, campo);
    return campo;
}

void frmDatosEmpresa::hace_empresa(QFormLayout& caja)
{
    m_nombre = agrega(caja, "txtNombre", QStringLiteral("Nombre:"), de_nombre);
    m_nif = agrega(caja, "txtNIF", QStringLiteral("NIF:"), de_nif);
    m_domicilio = agrega(caja, "txtDomicilio", QStringLiteral("Domicilio:"), de_domicilio);
    m_codigo_postal = agrega(caja, "txtCodigoPostal", QStringLiteral("Código postal:"), de_codigo_postal);
    m_poblacion = agrega(caja, "txtPoblacion", QStringLiteral("Población:"), de_poblacion);
    m_provincia = agrega(caja, "txtProvincia", QStringLiteral("Provincia:"), de_poblacion);
    m_almacen = agrega(caja, "txtAlmacen", QStringLiteral("Almacén:"), de_poblacion - 20);
    m_almacen->setText(QStringLiteral("Central"));
    m_usuario = agrega(caja, "txtUsuario", QStringLiteral("Quien la usa:"), de_nombre);
    m_impuesto = agrega(caja, "txtImpuesto", QStringLiteral("Impuesto:"), de_impuesto);
    m_impuesto->setText(QStringLiteral("IGIC"));
    m_porcentaje = agrega(caja, "txtPorcentaje", QStringLiteral("Tanto por ciento:"), de_porcentaje);
    m_porcentaje->setText(QStringLiteral("7,00"));
}

void frmDatosEmpresa::hace_proveedor(QFormLayout& caja)
{
    m_proveedor = agrega(caja, "txtProveedor", QStringLiteral("Nombre del proveedor:"), de_nombre - 8);
    m_nif_proveedor = agrega(caja, "txtNIFProveedor", QStringLiteral("Su NIF:"), de_nif);
    m_domicilio_proveedor
        = agrega(caja, "txtDomicilioProveedor", QStringLiteral("Su domicilio:"), de_domicilio);
    m_codigo_postal_proveedor
        = agrega(caja, "txtCodigoPostalProveedor", QStringLiteral("Su código postal:"), de_codigo_postal);
    m_poblacion_proveedor
        = agrega(caja, "txtPoblacionProveedor", QStringLiteral("Su población:"), de_poblacion);
}

void frmDatosEmpresa::acepta()
{
    const std::array<std::pair<QLineEdit*, const char*>, 6> exigidos{ {
        { m_nombre, "el nombre de la empresa" },
        { m_nif, "el NIF de la empresa" },
        { m_almacen, "el nombre del almacén" },
        { m_usuario, "el nombre de quien la usa" },
        { m_impuesto, "el nombre del impuesto" },
        { m_proveedor, "el nombre del proveedor" },
    } };
    const auto falta = [this](QLineEdit& caja, const QString& motivo) {
        m_falta->setText(motivo);
        pon_de_aviso(*m_falta, true);
        resize(width(), std::max(height(), layout()->totalHeightForWidth(width())));
        caja.setFocus();
    };
    for (const auto& [caja, que] : exigidos)
        if (caja->text().trimmed().isEmpty()) {
            falta(*caja, QStringLiteral("Falta %1.").arg(a_qt(que)));
            return;
        }
    if (!porcentaje_de(m_porcentaje->text()))
        falta(*m_porcentaje, QStringLiteral("El tanto por ciento del impuesto es un número de 0 a 100."));
    else
        accept();
}

bases::DatosEmpresa frmDatosEmpresa::Datos() const
{
    return { tecleado_en(m_nombre), tecleado_en(m_nif), tecleado_en(m_domicilio),
        tecleado_en(m_codigo_postal), tecleado_en(m_poblacion), tecleado_en(m_provincia),
        tecleado_en(m_almacen), tecleado_en(m_usuario), tecleado_en(m_impuesto),
        porcentaje_de(m_porcentaje->text()).value_or(Currency()),
        { tecleado_en(m_proveedor), tecleado_en(m_nif_proveedor), tecleado_en(m_domicilio_proveedor),
            tecleado_en(m_codigo_postal_proveedor), tecleado_en(m_poblacion_proveedor) } };
}

/// Enter moves on, as everywhere.
void frmDatosEmpresa::keyPressEvent(QKeyEvent* tecla)
{
    const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
    if (auto* campo = qobject_cast<QLineEdit*>(focusWidget()); intro && campo != nullptr)
        pasa_al_siguiente(*campo);
    else
        Formulario::keyPressEvent(tecla);
}

} // namespace atipicos::app
