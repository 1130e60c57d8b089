#include "host/ventanas/frmAnular.hpp"

#include "context/Cajas.hpp"
#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Anuncio.hpp"
#include "controls/Icono.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/comprobacion/Contrario.hpp"
#include "host/comprobacion/LosQueSobran.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "runtime/Formato.hpp"

#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace atipicos::app {

namespace {

    struct ColumnaDeAnular {
        const char* titulo;
        int letras;
        bool a_la_derecha = false;
    };
    constexpr std::array<ColumnaDeAnular, 6> columnas_de_anular{ { { "Asiento", 14 }, { "Fecha", 14 },
        { "Documento", 15 }, { "Cuenta", 14 }, { "Importe", 14, true }, { "Qué es", 50 } } };

    std::string asientos_son(std::size_t cuantos)
    {
        return cuantos == 1 ? "1 asiento" : std::to_string(cuantos) + " asientos";
    }

    Date de_la_caja(const QDateEdit& caja)
    {
        const auto dia = caja.date();
        return Date::de_dia(dia.year(), dia.month(), dia.day()).value_or(Date());
    }

    std::string lo_hecho(const ResultadoRegularizar& resultado)
    {
        std::string texto;
        for (const auto& una : resultado.hechas)
            texto += "El asiento " + nombre_corto(una.asiento) + " queda anulado con el "
                + nombre_corto(una.por) + ".\r\n";
        for (const auto& [asiento, motivo] : resultado.omitidas)
            texto += "El asiento " + nombre_corto(asiento) + " se deja como está: " + motivo + ".\r\n";
        return texto;
    }

}

frmAnular::frmAnular(Sesion& sesion, const bases::Lugar& lugar, QWidget* parent)
    : Formulario(parent)
    , m_sesion(sesion)
    , m_estado(new QLabel(QStringLiteral("Se está comprobando toda la contabilidad…"), this))
    , m_rejilla(new VSFlexGrid(this))
    , m_fecha(new QDateEdit(this))
    , m_anular(new QPushButton(QStringLiteral("&Anular los que sobran"), this))
    , m_lector(lugar, sesion.empresa->Codigo(Donde::aqui()), sesion.empresa->EmpresaProveedores())
{
    setObjectName(QStringLiteral("frmAnular"));
    setWindowTitle(QStringLiteral("Anular asientos sin cargo"));
    m_estado->setObjectName(QStringLiteral("lblEstado"));
    m_estado->setWordWrap(true);
    anuncia(*m_estado);
    hace_lista();
    auto* caja = new QVBoxLayout(this);
    caja->addWidget(m_estado);
    caja->addWidget(m_rejilla, 1);
    hace_pie(*caja);
    pon_iconos(*this);
    resize(fontMetrics().averageCharWidth() * 134, fontMetrics().height() * 24);
    lee();
}

void frmAnular::hace_lista()
{
    m_rejilla->setObjectName(QStringLiteral("vsAsientos"));
    m_rejilla->setAccessibleName(QStringLiteral("Asientos sin cargo"));
    m_rejilla->set_Cols(static_cast<int>(columnas_de_anular.size()));
    const int letra = fontMetrics().averageCharWidth();
    for (int i = 0; i < m_rejilla->Cols(); ++i) {
        const auto& columna = columnas_de_anular.at(static_cast<std::size_t>(i));
        m_rejilla->set_TextMatrix(0, i, a_qt(columna.titulo));
        m_rejilla->setColumnWidth(i, columna.letras * letra);
        if (columna.a_la_derecha)
            m_rejilla->set_ColAlignment(i, Qt::AlignRight | Qt::AlignVCenter);
    }
    m_rejilla->horizontalHeader()->setStretchLastSection(true);
}

void frmAnular::hace_pie(QVBoxLayout& caja)
{
    auto* titulo = new QLabel(QStringLiteral("Con &fecha:"), this);
    titulo->setBuddy(m_fecha);
    const auto hoy = modComun::reloj().hoy();
    m_fecha->setObjectName(QStringLiteral("txtFechaAnular"));
    m_fecha->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    m_fecha->setCalendarPopup(true);
    m_fecha->setDate(QDate(hoy.anio(), hoy.mes(), hoy.dia()));
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    m_anular->setObjectName(QStringLiteral("cmdAnular"));
    cerrar->setObjectName(QStringLiteral("cmdCerrar"));
    m_anular->setAutoDefault(true); // Enter presses it
    m_anular->setEnabled(false);
    auto* pie = new QHBoxLayout;
    pie->addWidget(titulo);
    pie->addWidget(m_fecha);
    pie->addStretch(1);
    pie->addWidget(m_anular);
    pie->addWidget(cerrar);
    caja.addLayout(pie);
    connect(m_anular, &QPushButton::clicked, this, &frmAnular::anula);
    connect(cerrar, &QPushButton::clicked, this, &QDialog::reject);
    connect(&m_lector, &HiloLector::Fallo, this, [this](const QString& motivo) {
        m_estado->setText(QStringLiteral("No se puede comprobar la contabilidad: ") + motivo);
    });
}

void frmAnular::lee()
{
    m_lector.Haz([this](const Ambito& ambito, const Sigue& sigue) {
        auto todos = verifica(ambito.bases).sin_cargo;
        m_lector.al_mostrar(sigue, [this, todos = std::move(todos)] { muestra(todos); });
        m_lector.al_mostrar(sigue, [this] { m_lector.Para(); });
    });
}

void frmAnular::muestra(const std::vector<AsientoSinCargo>& todos)
{
    for (const auto& uno : todos)
        m_rejilla->AddItem(a_qt(nombre_corto(uno.asiento) + '\t' + uno.fecha.texto() + '\t' + uno.documento
            + '\t' + uno.cuenta + '\t' + texto_pantalla(uno.importe, 2) + '\t' + uno.explicacion));
    m_rejilla->set_Row(1);
    m_sobran = los_que_sobran(todos);
    auto texto = m_sobran.empty() ? std::string("No hay ningún asiento que sea seguro que sobra.")
                                  : (m_sobran.size() == 1 ? "Sobra " : "Sobran ")
            + asientos_son(m_sobran.size()) + ", por " + texto_pantalla(suma_de(m_sobran), 2)
            + ". Anular uno hace otro con los mismos apuntes al contrario.";
    if (const auto dudosos = todos.size() - m_sobran.size(); dudosos > 0)
        texto += " De " + asientos_son(dudosos)
            + " no es seguro: se anulan nombrándolos, con la orden atipicos regularizar.";
    m_estado->setText(a_qt(texto));
    m_anular->setEnabled(!m_sobran.empty());
    if (!m_sobran.empty())
        m_anular->setFocus();
}

void frmAnular::anula()
{
    trap(
        "frmAnular:anula",
        [&] {
            const auto fecha = de_la_caja(*m_fecha);
            if (const auto motivo = impedimento_para_anular(*m_sesion.bases.bexmor, m_sobran, fecha);
                !motivo.empty()) {
                avisa(motivo + " No se ha anulado nada; ponga otra fecha.");
                m_fecha->setFocus();
                return;
            }
            if (!confirma("¿Anular " + asientos_son(m_sobran.size()) + ", por "
                    + texto_pantalla(suma_de(m_sobran), 2) + ", con fecha " + fecha.texto() + "?"))
                return;
            std::vector<ClaveAsiento> cuales;
            for (const auto& uno : m_sobran)
                cuales.push_back(uno.asiento);
            const Regularizador quien{ fecha, std::to_string(m_sesion.empresa->Usuario()),
                modComun::reloj().ahora() };
            const auto resultado = regulariza(m_sesion.bases, cuales, quien);
            avisa(lo_hecho(resultado), Icono::informacion, "Asientos anulados");
            accept();
        },
        TextoError::SoloDescripcion);
}

} // namespace atipicos::app
