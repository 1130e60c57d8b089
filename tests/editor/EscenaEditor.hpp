#pragma once

#include "controls/qvMaskEdBox.hpp"
#include "controls/Selector.hpp"
#include "controls/VSFlexGrid.hpp"
#include "editor/frmCompras_Atipicos.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"

#include <QLabel>
#include <QLineEdit>

#include <memory>

namespace atipicos::pruebas {

/// The charge editor on the sample company, as a clerk has it before him.
struct EscenaEditor {
    Banco banco;
    std::unique_ptr<frmCompras_Atipicos> form = std::make_unique<frmCompras_Atipicos>();

    explicit EscenaEditor(const Sede& sede = en_carpeta())
        : banco(sede)
    {
    }
    explicit EscenaEditor(const std::string& codigo, std::int16_t almacen = 1, std::int16_t ejercicio = 2026)
    {
        abre(codigo, almacen, ejercicio);
    }

    /// Opens the form for a new charge or, with a code, for that charge.
    void abre(const std::string& codigo = {}, std::int16_t almacen = 1, std::int16_t ejercicio = 2026)
    {
        form->Codigo = codigo;
        form->Almacen = almacen;
        form->Ejercicio = ejercicio;
        form->Show();
        if (!QTest::qWaitForWindowActive(form.get(), atipicos::pruebas::paciencia))
            qFatal("the editor is not active");
        banco.parte->dichas.clear();
    }

    template <class T = QWidget> T& c(const char* nombre) { return control<T>(*form, nombre); }
    VSFlexGrid& rejilla() { return c<VSFlexGrid>("vsCargos"); }
    QString total() { return c<QLabel>("lblTotal").text(); }
    QString texto(const char* nombre) { return c<QLineEdit>(nombre).text(); }

    /// The cells of a row, the hidden one included.
    QString fila(int numero)
    {
        QStringList celdas;
        for (int columna = 0; columna < rejilla().Cols(); ++columna)
            celdas << rejilla().TextMatrix(numero, columna);
        return celdas.join(u'|');
    }

    /// "enabled", "disabled", or what is not as the others among the five buttons.
    QString cinco_botones()
    {
        QStringList habilitados;
        for (const auto* nombre : { "cmdModificar", "cmdEliminar", "cmdAceptar", "cmdCancelar", "cmdComent" })
            if (c<>(nombre).isEnabled())
                habilitados << QLatin1String(nombre);
        return habilitados.isEmpty()  ? QStringLiteral("disabled")
            : habilitados.size() == 5 ? QStringLiteral("enabled")
                                      : habilitados.join(u' ');
    }

    /// From the warehouse on, by keys: the supplier, and Enter through the rest of the header.
    static void teclea_cabecera(const char* proveedor)
    {
        intro();
        teclea(proveedor);
        intro(4); // supplier, date, observations, franchise
    }

    /// From the article on, by keys: each field and Enter; "=" leaves what is there.
    static void teclea_linea(const char* articulo, const char* descripcion, const char* observaciones,
        const char* unidades, const char* costo)
    {
        for (const auto* campo : { articulo, descripcion, observaciones, unidades, costo }) {
            if (QLatin1String(campo) != QLatin1String("=")) {
                pulsa(Qt::Key_A, Qt::ControlModifier);
                pulsa(Qt::Key_Delete);
                teclea(campo);
            }
            intro();
        }
        intro(); // in the amount: accepts the line
    }

    /// Presses accept, settles the forecasts, and does not print.
    void acepta(const std::function<void(QWidget&)>& previsiones = [](QWidget&) { pulsa(Qt::Key_F9); })
    {
        const AlAbrirse contabilizar(previsiones, "frmCompras_Atipicos_Contabilizar");
        const AlAbrirse impresora([](QWidget& dialogo) { clic(dialogo, "cmdCancelar"); }, "frmImpresora");
        enfocado();
        atajo(Qt::Key_A);
    }

    [[nodiscard]] const std::vector<Mensaje>& avisos() const { return banco.avisos->dichos; }
};

} // namespace atipicos::pruebas
