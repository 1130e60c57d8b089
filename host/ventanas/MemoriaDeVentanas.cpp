#include "host/ventanas/MemoriaDeVentanas.hpp"

#include "controls/Formulario.hpp"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QScreen>
#include <QSettings>
#include <QTableView>
#include <QTimer>

namespace atipicos::app {

namespace {

    constexpr auto atendida = "atipicos_recordada"; ///< the columns of this grid are watched already

    /// Its name, and what it is full of where that is not always the same.
    QString nombre_recordado(const QWidget& ventana)
    {
        const auto contenido = ventana.property(MemoriaDeVentanas::contenido).toString();
        return contenido.isEmpty() ? ventana.objectName() : ventana.objectName() + u'-' + contenido;
    }

    QString clave_de_columna(const QString& ventana, const QTableView& rejilla, int columna)
    {
        return QStringLiteral("%1/%2/%3").arg(ventana, rejilla.objectName()).arg(columna);
    }

}

MemoriaDeVentanas::MemoriaDeVentanas(std::int32_t usuario, QObject* parent)
    : QObject(parent)
    , m_grupo(QStringLiteral("ventanas/%1/").arg(usuario))
{
    qApp->installEventFilter(this);
}

bool MemoriaDeVentanas::eventFilter(QObject* objeto, QEvent* evento)
{
    const bool se_muestra = evento->type() == QEvent::Show;
    if ((!se_muestra && evento->type() != QEvent::Hide) || evento->spontaneous() || !objeto->isWidgetType())
        return false;
    auto& ventana = static_cast<QWidget&>(*objeto);
    if (!ventana.isWindow())
        return false;
    if (se_muestra)
        se_abre(ventana);
    else
        se_cierra(ventana);
    return false;
}

void MemoriaDeVentanas::se_abre(QWidget& ventana)
{
    if (auto* dialogo = qobject_cast<QFileDialog*>(&ventana))
        pon_carpeta(*dialogo);
    if (qobject_cast<Formulario*>(&ventana) == nullptr || ventana.objectName().isEmpty())
        return;
    const QString nombre = m_grupo + nombre_recordado(ventana);
    const auto medida = QSettings().value(nombre + QStringLiteral("/medida")).toSize();
    if (medida.isValid())
        ventana.resize(medida.boundedTo(ventana.screen()->availableSize()));
    for (auto* rejilla : ventana.findChildren<QTableView*>())
        if (!rejilla->objectName().isEmpty())
            recuerda_columnas(nombre, *rejilla);
}

void MemoriaDeVentanas::se_cierra(const QWidget& ventana) const
{
    if (const auto* dialogo = qobject_cast<const QFileDialog*>(&ventana)) {
        if (dialogo->result() == QDialog::Accepted)
            QSettings().setValue(m_grupo + QStringLiteral("carpeta"), dialogo->directory().absolutePath());
    } else if (qobject_cast<const Formulario*>(&ventana) != nullptr && !ventana.objectName().isEmpty()
        && !ventana.isMaximized())
        QSettings().setValue(m_grupo + nombre_recordado(ventana) + QStringLiteral("/medida"), ventana.size());
}

/// Once the form has laid itself out, because some of its columns share what it is wide. What the program
/// itself does to a column is not what the person wants: that is told by the button of the mouse.
void MemoriaDeVentanas::recuerda_columnas(const QString& ventana, QTableView& rejilla)
{
    QTimer::singleShot(0, &rejilla, [ventana, &rejilla] {
        const QSettings guardado;
        for (int i = 0; i < rejilla.horizontalHeader()->count(); ++i) {
            const int ancho = guardado.value(clave_de_columna(ventana, rejilla, i)).toInt();
            if (ancho > 0)
                rejilla.setColumnWidth(i, ancho);
        }
    });
    if (rejilla.property(atendida).toBool())
        return;
    rejilla.setProperty(atendida, true);
    connect(rejilla.horizontalHeader(), &QHeaderView::sectionResized, this,
        [ventana, &rejilla](int columna, int /*antes*/, int ahora) {
            if (QApplication::mouseButtons().testFlag(Qt::LeftButton) && ahora > 0)
                QSettings().setValue(clave_de_columna(ventana, rejilla, columna), ahora);
        });
}

void MemoriaDeVentanas::pon_carpeta(QFileDialog& dialogo) const
{
    const QString carpeta = QSettings().value(m_grupo + QStringLiteral("carpeta")).toString();
    if (dialogo.acceptMode() == QFileDialog::AcceptSave && !carpeta.isEmpty() && QDir(carpeta).exists())
        dialogo.setDirectory(carpeta);
}

} // namespace atipicos::app
