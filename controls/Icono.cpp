#include "controls/Icono.hpp"

#include "controls/DibujoSvg.hpp"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <array>
#include <utility>

/// The drawings are in a static library: whoever uses them sees to it that they are linked.
static void pon_recursos() { Q_INIT_RESOURCE(iconos); }

namespace atipicos {

namespace {

    /// Draws when it is asked to, in the colours of that moment.
    class MotorIcono final : public QIconEngine {
    public:
        explicit MotorIcono(DibujoSvg dibujo)
            : m_dibujo(std::move(dibujo))
        {
        }

        [[nodiscard]] QIconEngine* clone() const override { return new MotorIcono(m_dibujo); }

        void paint(QPainter* pintor, const QRect& donde, QIcon::Mode modo, QIcon::State /*estado*/) override
        {
            const int lado = std::min(donde.width(), donde.height());
            QRectF cuadro(0, 0, lado, lado);
            cuadro.moveCenter(QRectF(donde).center());
            const auto grupo = modo == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
            const auto papel = modo == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
            m_dibujo.pinta(*pintor, cuadro, QApplication::palette().color(grupo, papel));
        }

        QPixmap pixmap(const QSize& medida, QIcon::Mode modo, QIcon::State estado) override
        {
            QPixmap lienzo(medida);
            lienzo.fill(Qt::transparent);
            QPainter pintor(&lienzo);
            paint(&pintor, QRect(QPoint(), medida), modo, estado);
            return lienzo;
        }

    private:
        DibujoSvg m_dibujo;
    };

    constexpr std::array<std::pair<const char*, const char*>, 32> de_orden{ {
        { "cmdAbrir", "abrir" },
        { "cmdAceptar", "aceptar" },
        { "cmdAnterior", "anterior" },
        { "cmdAnular", "eliminar" },
        { "cmdBuscar", "buscar" },
        { "cmdCancelar", "cancelar" },
        { "cmdCerrar", "cerrar" },
        { "cmdComent", "comentario" },
        { "cmdCrear", "nuevo" },
        { "cmdEliminar", "eliminar" },
        { "cmdExportar", "exportar" },
        { "cmdGuardar", "guardar" },
        { "cmdImprimir", "imprimir" },
        { "cmdModificar", "modificar" },
        { "cmdNueva", "nuevo" },
        { "cmdPrevEliminar", "eliminar" },
        { "cmdPrimero", "primero" },
        { "cmdReclamaciones", "nuevo" },
        { "cmdSalir", "salir" },
        { "cmdSiguiente", "siguiente" },
        { "cmdUltimo", "ultimo" },
        { "mnuAbrirEmpresa", "abrir" },
        { "mnuActualizar", "actualizar" },
        { "mnuBuscar", "buscar" },
        { "mnuEnviarElegidos", "correo" },
        { "mnuExportarElegidos", "exportar" },
        { "mnuImprimirElegidos", "guardar" },
        { "mnuReclamaciones", "nuevo" },
        { "mnuResumen", "resumen" },
        { "mnuSacarElegidos", "imprimir" },
        { "mnuTeclas", "teclas" },
        { "mnuVisor", "lista" },
    } };

    template <class Orden> void pon_icono(Orden& orden)
    {
        if (!orden.icon().isNull())
            return;
        for (const auto& [nombre, dibujo] : de_orden)
            if (orden.objectName() == QLatin1String(nombre))
                orden.setIcon(icono(QLatin1String(dibujo)));
    }

}

QIcon icono(const QString& nombre)
{
    pon_recursos();
    QFile fichero(QStringLiteral(":/atipicos/iconos/%1.svg").arg(nombre));
    if (!fichero.open(QIODevice::ReadOnly))
        return {};
    auto dibujo = DibujoSvg::lee(fichero);
    return dibujo.vacio() ? QIcon() : QIcon(new MotorIcono(std::move(dibujo)));
}

void pon_iconos(QWidget& ventana)
{
    for (auto* boton : ventana.findChildren<QAbstractButton*>())
        pon_icono(*boton);
    for (auto* accion : ventana.findChildren<QAction*>())
        pon_icono(*accion);
}

} // namespace atipicos
