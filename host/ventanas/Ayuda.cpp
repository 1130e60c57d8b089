#include "host/ventanas/Ayuda.hpp"

#include "host/ventanas/frmManual.hpp"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>

#include <array>
#include <utility>

namespace atipicos::app {

namespace {

    constexpr auto propiedad = "pagina_del_manual";

    /// Names of windows, of parts of windows, and of classes that have no name of their own.
    constexpr std::array<std::pair<const char*, const char*>, 36> paginas{ {
        { "frmPrincipal", "principal.md" },
        { "fraBorradores", "principal.md#cargos-sin-guardar" },
        { "fraPendientes", "principal.md#pendiente" },
        { "vsCifras", "principal.md#este-mes-y-este-año" },
        { "panCargos", "principal.md#últimos-cargos" },
        { "frmPendiente", "principal.md#pendiente" },
        { "frmAnular", "principal.md#anular-asientos-sin-cargo" },
        { "frmHistorial", "principal.md#historial-de-un-cargo" },
        { "frmFichas", "principal.md#proveedores-y-artículos" },
        { "frmFicha", "principal.md#proveedores-y-artículos" },
        { "frmEmpresa", "principal.md#abrir-o-crear-otra-empresa" },
        { "frmDatosEmpresa", "principal.md#abrir-o-crear-otra-empresa" },
        { "frmResumen", "resumen.md" },
        { "dlgImprimirElegidos", "imprimir.md#guardar-como-pdf" },
        { "frmReintento", "puestos.md#cuando-se-pierde-la-conexión" },
        { "frmEspera", "puestos.md#cuando-se-pierde-la-conexión" },
        { "frmSesion", "principal.md#empresa-y-usuario" },
        { "frmCompras_Atipicos", "editor.md" },
        { "fraCab1", "editor.md#la-cabecera" },
        { "fraLin", "editor.md#teclear-una-línea" },
        { "vsCargos", "editor.md#la-lista-de-líneas" },
        { "frmEditor_Comentarios", "editor.md#observaciones-largas" },
        { "frmCompras_Atipicos_Contabilizar", "previsiones.md" },
        { "vsPrev", "previsiones.md#la-lista-de-previsiones" },
        { "ListaSeleccion", "buscar.md" },
        { "frmCompras_Atipicos_Visor", "visor.md" },
        { "vsCab", "visor.md#la-lista" },
        { "tabDetalles", "visor.md#detalles" },
        { "dlgExportar", "visor.md#exportar" },
        { "frmImpresora", "imprimir.md" },
        { "frmView", "imprimir.md#el-visor-del-documento" },
        { "QPrintDialog", "imprimir.md#el-visor-del-documento" },
        { "QFileDialog", "imprimir.md#guardar-como-pdf" },
        { "MsgBox", "mensajes.md" },
        { "QMessageBox", "mensajes.md" },
        { "frmManual", "manual.md" },
    } };

    QString direccion_llamada(const QString& nombre)
    {
        for (const auto& [cual, direccion] : paginas)
            if (nombre == QLatin1String(cual))
                return QString::fromUtf8(direccion);
        return {};
    }

    /// The place of this widget alone: what it says itself, its name, or its class and those above it.
    QString la_suya(const QWidget& uno)
    {
        if (auto dicha = uno.property(propiedad).toString(); !dicha.isEmpty())
            return dicha;
        if (auto por_nombre = direccion_llamada(uno.objectName()); !por_nombre.isEmpty())
            return por_nombre;
        for (const auto* clase = uno.metaObject(); clase != nullptr; clase = clase->superClass()) {
            auto por_clase = direccion_llamada(
                QString::fromLatin1(clase->className()).section(QStringLiteral("::"), -1));
            if (!por_clase.isEmpty())
                return por_clase;
        }
        return {};
    }

    QPointer<Ayuda>& actual()
    {
        static QPointer<Ayuda> una;
        return una;
    }

    bool es_la_tecla(const QEvent& evento)
    {
        if (evento.type() != QEvent::KeyPress && evento.type() != QEvent::ShortcutOverride)
            return false;
        const auto& tecla = static_cast<const QKeyEvent&>(evento);
        return tecla.key() == Qt::Key_F1 && (tecla.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    }

}

Ayuda::Ayuda()
{
    actual() = this;
    qApp->installEventFilter(this);
}

Ayuda::~Ayuda() = default;

void Ayuda::abre(const QString& direccion)
{
    if (actual() != nullptr)
        actual()->muestra(direccion);
}

QString Ayuda::direccion_de(const QWidget* donde)
{
    for (; donde != nullptr; donde = donde->parentWidget())
        if (auto suya = la_suya(*donde); !suya.isEmpty())
            return suya;
    return QStringLiteral("indice.md");
}

QStringList Ayuda::conocidas()
{
    QStringList todas;
    for (const auto& [cual, direccion] : paginas)
        todas << QString::fromLatin1(cual);
    return todas;
}

/// Of a box what it says has a place of its own.
QString Ayuda::direccion_ahora(const QWidget& con_foco)
{
    const auto* caja = qobject_cast<const QMessageBox*>(con_foco.window());
    const auto ancla = caja == nullptr ? QString() : Manual().ancla_de_mensaje(caja->text());
    return ancla.isEmpty() ? direccion_de(&con_foco) : QStringLiteral("mensajes.md#") + ancla;
}

void Ayuda::muestra(const QString& direccion)
{
    if (!m_manual)
        m_manual = std::make_unique<frmManual>();
    m_manual->muestra(direccion);
}

/// It comes before the shortcuts of the windows, so that none of them has an F1 of its own.
bool Ayuda::eventFilter(QObject* objeto, QEvent* evento)
{
    const auto* donde = qobject_cast<QWidget*>(objeto);
    if (donde == nullptr || !es_la_tecla(*evento))
        return false;
    evento->accept();
    if (evento->type() == QEvent::ShortcutOverride || static_cast<QKeyEvent*>(evento)->isAutoRepeat())
        return true;
    const QString direccion = direccion_ahora(*donde);
    if (auto* desplegado = QApplication::activePopupWidget()) // it would keep all keys
        desplegado->close();
    muestra(direccion);
    return true;
}

} // namespace atipicos::app
