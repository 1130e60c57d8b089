#include "host/ventanas/frmResumen.hpp"

#include "context/modComun.hpp"
#include "context/trap.hpp"
#include "controls/Anuncio.hpp"
#include "controls/qvAlmacen.hpp"
#include "controls/qvMaskEdBox.hpp"
#include "controls/qvProveedor.hpp"
#include "controls/SinDibujar.hpp"
#include "controls/Texto.hpp"
#include "controls/Twips.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/graficos/PanelGraficos.hpp"
#include "host/resumen/ColumnasResumen.hpp"
#include "host/sesion/Sesion.hpp"
#include "host/ventanas/ExportarResumen.hpp"
#include "runtime/Celdas.hpp"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>

namespace atipicos::app {

namespace {

    AmbitoResumen ambito_de(const Sesion& sesion)
    {
        return { sesion.empresa->Codigo(), sesion.empresa->EmpresaProveedores() };
    }

    int twips_de(DatoResumen dato)
    {
        switch (dato) {
        case DatoResumen::codigo:
            return 800;
        case DatoResumen::nombre:
            return 2700;
        case DatoResumen::cuantos:
        case DatoResumen::parte:
            return 750;
        case DatoResumen::antes:
            return 1400;
        default:
            return 1150;
        }
    }

    void prepara_columnas(VSFlexGrid& tabla, VistaResumen por)
    {
        const auto columnas = columnas_resumen(por);
        tabla.set_Cols(static_cast<int>(columnas.size()));
        for (int i = 0; i < tabla.Cols(); ++i) {
            const auto& columna = columnas[static_cast<std::size_t>(i)];
            tabla.set_TextMatrix(0, i, a_qt(columna.titulo));
            tabla.set_ColWidth(i, twips_de(columna.dato));
            const bool a_la_izquierda = columna.dato == DatoResumen::nombre;
            tabla.set_ColAlignment(i, Qt::AlignVCenter | (a_la_izquierda ? Qt::AlignLeft : Qt::AlignRight));
            tabla.set_ColOrden(i,
                es_texto(columna) && !(columna.dato == DatoResumen::codigo && por != VistaResumen::mes)
                    ? Clase::texto
                    : Clase::numero);
        }
    }

    /// "Cargos: 74   Base: …   Impuesto: …"; a line ends between two of them, and not inside one.
    QString linea_de_total(const ResumenCargos& resumen)
    {
        constexpr QChar sin_partir(0x00A0);
        QStringList partes;
        for (const auto& columna : columnas_resumen(resumen.peticion().por)) {
            if (es_texto(columna) || columna.dato == DatoResumen::parte)
                continue;
            partes << a_qt(std::string(columna.titulo) + ": " + celda_de(resumen, resumen.total(), columna))
                          .replace(u' ', sin_partir);
        }
        return partes.join(QStringLiteral("   "));
    }

}

frmResumen::frmResumen(Sesion& sesion, const bases::Lugar& lugar, QWidget* parent)
    : Formulario(parent, Qt::Window)
    , m_sesion(sesion)
    , m_lector(lugar, ambito_de(sesion))
    , m_por(new QComboBox(this))
    , m_desde(new qvMaskEdBox(this))
    , m_hasta(new qvMaskEdBox(this))
    , m_almacen(new qvAlmacen(this))
    , m_proveedor(new qvProveedor(this))
    , m_tabla(new VSFlexGrid(this))
    , m_total(new QLabel(this))
    , m_estado(new QLabel(this))
    , m_graficos(new PanelGraficos(this))
    , m_exportar(new QPushButton(QStringLiteral("&Exportar…"), this))
{
    setObjectName(QStringLiteral("frmResumen"));
    setWindowTitle(QStringLiteral("Resumen de cargos - ") + a_qt(sesion.empresa->Nombre()));
    auto* filtros = hace_filtros();
    hace_tabla();
    auto* lado = new QWidget(this);
    auto* izquierda = new QVBoxLayout(lado);
    izquierda->setContentsMargins({});
    izquierda->addWidget(m_tabla, 1);
    izquierda->addWidget(m_total);
    auto* partes = new QSplitter(Qt::Horizontal, this);
    partes->setChildrenCollapsible(false);
    partes->addWidget(lado);
    partes->addWidget(hace_graficos());
    partes->setStretchFactor(0, 1);
    partes->setStretchFactor(1, 1);
    const int de_la_tabla = twips_a_pixeles(12'000, *this); // all of its columns
    partes->setSizes({ de_la_tabla, de_la_tabla * 7 / 10 });
    auto* todo = new QVBoxLayout(this);
    todo->addLayout(filtros);
    todo->addWidget(partes, 1);
    todo->addLayout(hace_ordenes());
    conecta();
    resize(fontMetrics().averageCharWidth() * 225, fontMetrics().height() * 44); // or the screen
    const auto hoy = modComun::reloj().hoy();
    Muestra({ VistaResumen::proveedor, { Date::de_dia(hoy.anio(), 1, 1).value_or(hoy), hoy } });
}

QLayout* frmResumen::hace_filtros()
{
    m_por->setObjectName(QStringLiteral("cboPor"));
    for (const auto por :
        { VistaResumen::proveedor, VistaResumen::mes, VistaResumen::almacen, VistaResumen::articulo })
        m_por->addItem(a_qt(nombre_de(por)), static_cast<int>(por));
    m_desde->setObjectName(QStringLiteral("txtFechaI"));
    m_hasta->setObjectName(QStringLiteral("txtFechaF"));
    m_almacen->setObjectName(QStringLiteral("txtAlmacen"));
    m_proveedor->setObjectName(QStringLiteral("txtProveedor"));
    m_desde->setAccessibleName(QStringLiteral("Primer día"));
    m_hasta->setAccessibleName(QStringLiteral("Último día"));
    m_almacen->set_NombreAccesible(QStringLiteral("Sólo el almacén"));
    m_proveedor->set_NombreAccesible(QStringLiteral("Sólo el proveedor"));
    m_almacen->Prepara(m_sesion.empresa, m_sesion.bases.orvalin);
    m_proveedor->Prepara(m_sesion.empresa, m_sesion.bases.orvalin);
    auto* filtros = new QVBoxLayout; // two rows: large letters on a small screen are to fit
    auto* arriba = new QHBoxLayout;
    auto* abajo = new QHBoxLayout;
    const auto agrega = [this](QHBoxLayout& fila, const char* texto, QWidget* campo, int crece) {
        auto* delante = new QLabel(QString::fromUtf8(texto), this);
        delante->setBuddy(campo);
        fila.addWidget(delante);
        fila.addWidget(campo, crece);
    };
    agrega(*arriba, "&Por:", m_por, 0);
    agrega(*arriba, "&Desde:", m_desde, 0);
    agrega(*arriba, "&Hasta:", m_hasta, 0);
    arriba->addStretch(1);
    agrega(*abajo, "A&lmacén:", m_almacen, 2);
    agrega(*abajo, "P&roveedor:", m_proveedor, 3);
    filtros->addLayout(arriba);
    filtros->addLayout(abajo);
    return filtros;
}

void frmResumen::hace_tabla()
{
    m_tabla->setObjectName(QStringLiteral("vsResumen"));
    m_tabla->setAccessibleName(QStringLiteral("Resumen de cargos"));
    m_total->setObjectName(QStringLiteral("lblTotal"));
    m_total->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_total->setWordWrap(true);
    anuncia(*m_total, QStringLiteral("Total"));
    prepara_columnas(*m_tabla, VistaResumen::proveedor);
}

/// Where there is less room than they need they are scrolled, also by the keys.
QWidget* frmResumen::hace_graficos()
{
    auto* marco = new QScrollArea(this);
    marco->setObjectName(QStringLiteral("scrGraficos"));
    marco->setAccessibleName(QStringLiteral("Gráficos del resumen"));
    marco->setWidgetResizable(true);
    marco->setFrameShape(QFrame::NoFrame);
    marco->setWidget(m_graficos);
    return marco;
}

QLayout* frmResumen::hace_ordenes()
{
    m_estado->setObjectName(QStringLiteral("lblEstado"));
    m_estado->setWordWrap(true);
    anuncia(*m_estado);
    m_exportar->setObjectName(QStringLiteral("cmdExportar"));
    m_exportar->setEnabled(false);
    auto* cerrar = new QPushButton(QStringLiteral("&Cerrar"), this);
    cerrar->setObjectName(QStringLiteral("cmdCerrar"));
    for (auto* boton : { m_exportar, cerrar })
        boton->setAutoDefault(false);
    connect(cerrar, &QPushButton::clicked, this, &frmResumen::close);
    auto* fila = new QHBoxLayout;
    fila->addWidget(m_estado, 1);
    fila->addWidget(m_exportar);
    fila->addWidget(cerrar);
    return fila;
}

void frmResumen::conecta()
{
    connect(m_por, &QComboBox::currentIndexChanged, this, &frmResumen::Leer);
    for (auto* dia : { m_desde, m_hasta })
        connect(dia, &qvMaskEdBox::Intro, this, &frmResumen::Leer);
    connect(m_almacen, &Selector::Intro, this, &frmResumen::Leer);
    connect(m_proveedor, &Selector::Intro, this, &frmResumen::Leer);
    connect(m_exportar, &QPushButton::clicked, this, &frmResumen::exporta);
    connect(&m_lector, &LectorResumenes::Leido, this, &frmResumen::muestra);
    connect(&m_lector, &LectorResumenes::Fallido, this, &frmResumen::falla);
}

std::optional<PeticionResumen> frmResumen::peticion()
{
    for (auto* dia : { m_desde, m_hasta }) {
        dia->Completa();
        if (!dia->Fecha()) {
            di(dia->Falta());
            return std::nullopt;
        }
    }
    const auto desde = m_desde->Fecha().value_or(Date{});
    const auto hasta = m_hasta->Fecha().value_or(Date{});
    if (desde > hasta) {
        di(QStringLiteral("El primer día es posterior al último: cambie uno de los dos."));
        return std::nullopt;
    }
    return PeticionResumen{ static_cast<VistaResumen>(m_por->currentData().toInt()), { desde, hasta },
        m_almacen->Codigo(), m_proveedor->Codigo() };
}

void frmResumen::Muestra(const PeticionResumen& peticion)
{
    const QSignalBlocker sin_leer(m_por);
    m_por->setCurrentIndex(m_por->findData(static_cast<int>(peticion.por)));
    m_desde->set_Fecha(peticion.periodo.desde);
    m_hasta->set_Fecha(peticion.periodo.hasta);
    m_almacen->set_Codigo(peticion.almacen);
    m_proveedor->set_Codigo(peticion.proveedor);
    m_almacen->Buscar();
    m_proveedor->Buscar();
    Leer();
}

void frmResumen::Leer()
{
    const auto pedido = peticion();
    if (!pedido)
        return;
    di(QStringLiteral("Leyendo…"));
    m_lector.pide(*pedido);
}

void frmResumen::muestra(const ResumenLeido& leido)
{
    m_leido = leido;
    llena_tabla();
    const auto& resumen = leido.resumen;
    m_graficos->muestra(resumen, leido.meses);
    const auto nota = nota_de(resumen);
    m_total->setText(linea_de_total(resumen) + (nota.empty() ? QString() : u'\n' + a_qt(nota)));
    m_exportar->setEnabled(true);
    di(resumen.total().ahora.cuantos == 0 ? QStringLiteral("No hay cargos en esos días.")
                                          : a_qt(titulo(resumen.peticion())));
}

void frmResumen::llena_tabla()
{
    const auto& resumen = m_leido->resumen;
    m_tabla->set_Rows(1);
    m_tabla->set_Aviso(QStringLiteral("No hay cargos en esos días."));
    prepara_columnas(*m_tabla, resumen.peticion().por);
    {
        const SinDibujar sin_dibujar(*m_tabla);
        for (const auto& grupo : resumen.grupos()) {
            std::string fila;
            for (const auto& columna : columnas_resumen(resumen.peticion().por)) {
                fila += columna.dato == DatoResumen::codigo ? "" : "\t";
                anexa_celda(fila, celda_de(resumen, grupo, columna));
            }
            m_tabla->AddItem(QByteArray::fromStdString(fila));
        }
    }
    m_tabla->set_Row(1);
}

/// What was shown is of another question by now.
void frmResumen::falla(const QString& motivo)
{
    m_leido.reset();
    m_tabla->set_Rows(1);
    m_tabla->set_Aviso(QStringLiteral("No se ha podido leer."));
    m_graficos->vacia();
    m_total->clear();
    m_exportar->setEnabled(false);
    di(QStringLiteral("No se ha podido leer: %1 Con F5 se intenta otra vez.").arg(motivo));
}

void frmResumen::Guarda(const QString& fichero) const
{
    if (m_leido)
        guarda_resumen(m_leido->resumen, m_leido->meses, fichero);
}

void frmResumen::exporta()
{
    if (!m_leido)
        return;
    trap(
        "frmResumen:exporta",
        [&] {
            const auto fichero = pide_fichero_de_resumen(m_leido->resumen.peticion(), this);
            if (fichero.isEmpty())
                return;
            Guarda(fichero);
            di(QStringLiteral("Guardado en %1.").arg(fichero));
        },
        TextoError::SoloDescripcion);
}

void frmResumen::di(const QString& texto) { m_estado->setText(texto); }

void frmResumen::keyPressEvent(QKeyEvent* tecla)
{
    if (tecla->key() == Qt::Key_F5)
        Leer();
    else
        Formulario::keyPressEvent(tecla);
}

void abre_resumen(Sesion& sesion, const bases::Lugar& lugar, QWidget& padre)
{
    auto* ventana = padre.findChild<frmResumen*>(QStringLiteral("frmResumen"));
    if (ventana == nullptr) {
        ventana = new frmResumen(sesion, lugar, &padre);
        ventana->setAttribute(Qt::WA_DeleteOnClose);
    }
    ventana->show();
    ventana->raise();
    ventana->activateWindow();
}

} // namespace atipicos::app
