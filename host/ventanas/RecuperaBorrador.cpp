#include "host/ventanas/RecuperaBorrador.hpp"

#include "context/Cajas.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/sesion/CerrojoDeBorrador.hpp"
#include "host/ventanas/TecleaBorrador.hpp"

#include <QApplication>
#include <QPushButton>
#include <QTimer>

#include <utility>

namespace atipicos::app {

namespace {

    constexpr auto se_conserva = "El borrador se conserva; si ya no lo quiere, descártelo.";

    /// Runs `que` in the editor when it opens next, as long as this lives: a modal one returns when it
    /// closes.
    class AlAbrirElEditor final : public QObject {
    public:
        explicit AlAbrirElEditor(std::function<void(QWidget&)> que)
            : m_que(std::move(que))
        {
            qApp->installEventFilter(this);
        }

        bool eventFilter(QObject* objeto, QEvent* evento) override
        {
            if (evento->type() == QEvent::Show && m_que
                && objeto->objectName() == QLatin1String("frmCompras_Atipicos"))
                // It is loaded by now; what is typed waits until it is on screen.
                QTimer::singleShot(
                    0, this, [editor = static_cast<QWidget*>(objeto), que = std::exchange(m_que, nullptr)] {
                        que(*editor);
                    });
            return false;
        }

    private:
        std::function<void(QWidget&)> m_que;
    };

    /// The row of the charge in the list; 0 when it is not there.
    int fila_de(const VSFlexGrid& lista, const Borrador& borrador)
    {
        for (int fila = 1; fila < lista.Rows(); ++fila)
            if (de_qt(lista.TextMatrix(fila, 0).trimmed()) == borrador.Codigo
                && lista.TextMatrix(fila, 1).trimmed().toInt() == borrador.AlmacenDelCargo)
                return fila;
        return 0;
    }

    std::unique_ptr<CerrojoDeBorrador> toma_o_dilo(const std::filesystem::path& fichero)
    {
        std::error_code fallo;
        auto cerrojo = std::filesystem::exists(fichero, fallo) ? CerrojoDeBorrador::toma(fichero) : nullptr;
        if (!cerrojo)
            avisa("Este cargo sin guardar lo tiene ya otra ventana del programa.");
        return cerrojo;
    }

}

RecuperaBorrador::RecuperaBorrador(std::shared_ptr<const BorradoresEnCarpeta> borradores, Ventanas ventanas)
    : m_borradores(std::move(borradores))
    , m_ventanas(std::move(ventanas))
{
}

bool RecuperaBorrador::Descartar(const std::filesystem::path& fichero) const
{
    const auto cerrojo = toma_o_dilo(fichero);
    if (cerrojo)
        cerrojo->borra_borrador();
    return cerrojo != nullptr;
}

void RecuperaBorrador::Recuperar(const std::filesystem::path& fichero) const
{
    const auto cerrojo = toma_o_dilo(fichero);
    if (!cerrojo)
        return;
    const BorradorLeido leido = m_borradores->lee(fichero);
    const Borrador& borrador = leido.borrador;
    const auto entero = [&] { cerrojo->borra_borrador(); };
    if (const auto codigo = m_ventanas.guardado(leido)) {
        entero();
        avisa("Este cargo llegó a guardarse: es el " + *codigo + " del almacén "
                + std::to_string(borrador.Almacen)
                + ". No hay nada que recuperar, y su borrador se ha quitado.",
            Icono::informacion);
        return;
    }
    if (borrador.Codigo.empty())
        teclea(*m_ventanas.editor(), borrador, entero);
    else
        abre_y_teclea(borrador, entero);
}

void RecuperaBorrador::teclea(QWidget& editor, const Borrador& borrador, const Entero& entero) const
{
    const auto faltan = teclea_borrador(editor, borrador);
    if (faltan.empty()) {
        entero();
        return;
    }
    std::string texto = "No se ha podido recuperar todo:\r\n";
    for (const auto& falta : faltan)
        texto += "\r\n" + falta;
    avisa(texto + "\r\n\r\n" + se_conserva);
}

void RecuperaBorrador::abre_y_teclea(const Borrador& borrador, const Entero& entero) const
{
    QWidget* visor = m_ventanas.visor(borrador.Ejercicio, borrador.AlmacenDelCargo);
    auto& lista = *visor->findChild<VSFlexGrid*>(QStringLiteral("vsCab"));
    const int fila = fila_de(lista, borrador);
    if (fila == 0) {
        avisa("Ya no está el cargo " + borrador.Codigo + " del almacén "
            + std::to_string(borrador.AlmacenDelCargo) + " que se estaba cambiando.\r\n\r\n" + se_conserva);
        return;
    }
    lista.set_Row(fila);
    const AlAbrirElEditor al_abrir([&](QWidget& editor) { teclea(editor, borrador, entero); });
    visor->findChild<QPushButton*>(QStringLiteral("cmdModificar"))->click();
}

} // namespace atipicos::app
