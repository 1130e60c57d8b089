#include "host/ventanas/TecleaBorrador.hpp"

#include "context/modComun.hpp"
#include "controls/qvAlmacen.hpp"
#include "controls/qvArticulo.hpp"
#include "controls/qvMaskEdBox.hpp"
#include "controls/qvProveedor.hpp"
#include "controls/qvTextBox.hpp"
#include "controls/Texto.hpp"
#include "controls/VSFlexGrid.hpp"
#include "runtime/Error.hpp"
#include "runtime/Formato.hpp"

#include <QCheckBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>
#include <memory>
#include <utility>

namespace atipicos::app {

namespace {

    /// While it lives the editor asks and tells nobody but the recovery.
    class AvisosDelEditor {
    public:
        AvisosDelEditor() { modComun::set_MsgBox(m_caja); }
        AvisosDelEditor(const AvisosDelEditor&) = delete;
        AvisosDelEditor& operator=(const AvisosDelEditor&) = delete;
        ~AvisosDelEditor() { modComun::set_MsgBox(m_antes); }

        void consiente(bool todo) noexcept { m_caja->consiente = todo; }

        /// What the editor has said since the last time; empty when it has said nothing.
        [[nodiscard]] std::string toma() noexcept { return std::exchange(m_caja->dicho, {}); }

    private:
        struct Caja final : MsgBox {
            std::string dicho;
            bool consiente = false;

            Respuesta mostrar(const Mensaje& mensaje) override
            {
                if (mensaje.botones == Botones::SiNo && consiente)
                    return Respuesta::Si;
                dicho += (dicho.empty() ? "" : " ") + mensaje.texto;
                return mensaje.por_defecto;
            }
        };

        std::shared_ptr<MsgBox> m_antes = modComun::Avisos();
        std::shared_ptr<Caja> m_caja = std::make_shared<Caja>();
    };

    class Tecleo {
    public:
        Tecleo(QWidget& editor, const Borrador& borrador)
            : m_editor(editor)
            , m_borrador(borrador)
        {
        }

        std::vector<std::string> teclea();

    private:
        template <class T> [[nodiscard]] T& c(const char* nombre) const
        {
            auto* hallado = m_editor.findChild<T*>(QLatin1String(nombre));
            if (hallado == nullptr)
                throw Error(numero_error::error_interno, "atipicos",
                    std::string("La ventana del cargo no tiene «") + nombre + "».");
            return *hallado;
        }
        [[nodiscard]] VSFlexGrid& rejilla() const { return c<VSFlexGrid>("vsCargos"); }

        [[nodiscard]] bool sigue_como_se_abrio() const;
        void quita_las_que_no_estan();
        void pon_cabecera();
        void pon_codigos(std::int16_t almacen, std::int32_t proveedor);
        void termina_cabecera();
        void recupera_lineas();
        void recupera_linea(int fila, const LineaBorrador& linea);
        [[nodiscard]] bool pon_linea(
            const LineaBorrador& linea, std::int32_t articulo, const std::string& cual);
        [[nodiscard]] bool acepta(const std::string& cual);
        void cambia(int fila);
        void pon_en_curso();
        void falta(const std::string& que) { m_faltan.push_back(que); }

        QWidget& m_editor;
        const Borrador& m_borrador;
        AvisosDelEditor m_avisos;
        std::vector<std::string> m_faltan;
    };

    std::vector<std::string> Tecleo::teclea()
    {
        if (!m_borrador.Codigo.empty()) {
            if (!sigue_como_se_abrio()) {
                falta("Alguien ha cambiado las líneas del cargo " + m_borrador.Codigo
                    + " después de que se abriera; lo que se tecleó no se ha tocado ni se ha puesto encima.");
                return m_faltan;
            }
            quita_las_que_no_estan();
        }
        pon_cabecera();
        recupera_lineas();
        pon_en_curso();
        termina_cabecera();
        return m_faltan;
    }

    bool Tecleo::sigue_como_se_abrio() const
    {
        QString ahora;
        for (int fila = 1; fila < rejilla().Rows(); ++fila)
            for (int columna = 0; columna < rejilla().Cols(); ++columna)
                ahora += rejilla().TextMatrix(fila, columna)
                    + (columna + 1 < rejilla().Cols() ? QLatin1Char('\t') : QLatin1Char('\n'));
        return de_qt(ahora) == m_borrador.Cargado;
    }

    /// From the last one up, so that the rows above keep their numbers.
    void Tecleo::quita_las_que_no_estan()
    {
        m_avisos.consiente(true);
        for (int fila = rejilla().Rows() - 1; fila >= 1; --fila) {
            const auto es_esta = [fila](const LineaBorrador& linea) { return linea.FilaCargada == fila; };
            if (std::any_of(m_borrador.Lineas.begin(), m_borrador.Lineas.end(), es_esta))
                continue;
            rejilla().set_Row(fila);
            c<QPushButton>("cmdEliminar").click();
        }
        m_avisos.consiente(false);
    }

    void Tecleo::pon_codigos(std::int16_t almacen, std::int32_t proveedor)
    {
        auto& caja_almacen = c<qvAlmacen>("txtAlmacen");
        if (caja_almacen.isEnabled() && caja_almacen.Codigo() != almacen) {
            caja_almacen.set_Codigo(almacen);
            caja_almacen.Buscar();
        }
        auto& caja_proveedor = c<qvProveedor>("txtProv");
        if (caja_proveedor.Codigo() != proveedor) {
            caja_proveedor.set_Codigo(proveedor);
            caja_proveedor.Buscar();
        }
    }

    void Tecleo::pon_cabecera()
    {
        // A line is taken only under a header that is complete; one that was emptied later is so at the end.
        pon_codigos(m_borrador.Almacen == 0 ? std::int16_t{ 1 } : m_borrador.Almacen,
            m_borrador.Proveedor == 0 ? 1 : m_borrador.Proveedor);
        if (const auto fecha = Date::de_texto(m_borrador.Fecha))
            c<qvMaskEdBox>("txtFecha").set_Fecha(*fecha);
        c<QPlainTextEdit>("txtObservaciones").setPlainText(a_qt(m_borrador.Observaciones));
        c<QCheckBox>("chkFranquiciado").setChecked(m_borrador.Franquiciado);
    }

    void Tecleo::termina_cabecera()
    {
        pon_codigos(m_borrador.Almacen, m_borrador.Proveedor);
        c<qvMaskEdBox>("txtFecha").setText(a_qt(m_borrador.Fecha));
        const auto& almacen = c<qvAlmacen>("txtAlmacen");
        if (almacen.Codigo() != m_borrador.Almacen)
            falta("El almacén era el " + std::to_string(m_borrador.Almacen) + " y aquí no se puede cambiar.");
        else if (m_borrador.Almacen != 0 && almacen.Nombre().isEmpty())
            falta("Ya no existe el almacén " + std::to_string(m_borrador.Almacen) + ".");
        if (m_borrador.Proveedor != 0 && c<qvProveedor>("txtProv").Nombre().isEmpty())
            falta("Ya no existe el proveedor " + std::to_string(m_borrador.Proveedor) + ".");
        if (const auto dicho = m_avisos.toma(); !dicho.empty())
            falta(dicho);
    }

    void Tecleo::recupera_lineas()
    {
        int fila = 0;
        for (const auto& linea : m_borrador.Lineas)
            if (!linea.Intacta)
                recupera_linea(++fila, linea);
            else
                ++fila;
    }

    void Tecleo::cambia(int fila)
    {
        rejilla().set_Row(fila);
        c<QPushButton>("cmdModificar").click();
    }

    void Tecleo::recupera_linea(int fila, const LineaBorrador& linea)
    {
        const std::string cual = "La línea " + std::to_string(fila);
        if (linea.FilaCargada != 0) {
            cambia(fila);
        } else if (linea.ArticuloDeCuenta != linea.Cod_Articulo) {
            // First as it was accepted with another article, to whose account it goes.
            if (!pon_linea(linea, linea.ArticuloDeCuenta, cual) || !acepta(cual))
                return;
            cambia(rejilla().Rows() - 1);
        }
        if (pon_linea(linea, linea.Cod_Articulo, cual))
            static_cast<void>(acepta(cual));
    }

    bool Tecleo::pon_linea(const LineaBorrador& linea, std::int32_t articulo, const std::string& cual)
    {
        auto& caja = c<qvArticulo>("txtArticulo");
        caja.set_Codigo(articulo);
        // A stored line stays, whatever has become of its article.
        const bool ya_estaba = linea.FilaCargada != 0 && linea.ArticuloDeCuenta == articulo;
        if (articulo != 0 && !caja.Buscar() && !ya_estaba) {
            const auto dicho = m_avisos.toma();
            falta(cual + " no se ha recuperado: "
                + (dicho.empty() ? "ya no existe el artículo " + std::to_string(articulo) + "." : dicho));
            caja.set_Codigo(0);
            return false;
        }
        c<QLineEdit>("txtArticuloDescripcion").setText(a_qt(linea.Descripcion));
        c<QLineEdit>("txtObserv").setText(a_qt(linea.Observaciones));
        c<qvTextBox>("txtUnidades").set_Valor(linea.Unidades);
        auto& costo = c<qvTextBox>("txtCosto");
        costo.set_Valor(linea.Costo);
        if (costo.Valor() != linea.Costo)
            falta(cual + " tenía el costo " + texto_pantalla(linea.Costo, 4) + " y ha quedado en "
                + de_qt(costo.text()) + ".");
        return true;
    }

    /// Enter in the amount: the one way in which a line is accepted.
    bool Tecleo::acepta(const std::string& cual)
    {
        QKeyEvent intro(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(&c<qvTextBox>("txtImporte"), &intro);
        const auto dicho = m_avisos.toma();
        if (!dicho.empty())
            falta(cual + " no se ha recuperado: " + dicho);
        return dicho.empty();
    }

    void Tecleo::pon_en_curso()
    {
        if (!m_borrador.HayEnCurso)
            return;
        const std::string cual = "La línea que se estaba tecleando";
        const auto filas = static_cast<std::size_t>(rejilla().Rows()) - 1;
        if (m_borrador.FilaEnCambio != 0 && filas != m_borrador.Lineas.size()) {
            falta(cual + " no se ha recuperado, porque cambiaba otra y no están todas.");
            return;
        }
        if (m_borrador.FilaEnCambio != 0)
            cambia(m_borrador.FilaEnCambio);
        static_cast<void>(pon_linea(m_borrador.EnCurso, m_borrador.EnCurso.Cod_Articulo, cual));
    }

}

std::vector<std::string> teclea_borrador(QWidget& editor, const Borrador& borrador)
{
    return Tecleo(editor, borrador).teclea();
}

} // namespace atipicos::app
