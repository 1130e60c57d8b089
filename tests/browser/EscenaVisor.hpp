#pragma once

#include "browser/frmCompras_Atipicos_Visor.hpp"
#include "controls/qvMaskEdBox.hpp"
#include "controls/VSFlexGrid.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Dialogo.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Teclas.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

namespace atipicos::pruebas {

/// The charge browser on the sample company, as a clerk has it before him.
struct EscenaVisor {
    Banco banco;
    frmCompras_Atipicos_Visor form;

    explicit EscenaVisor(const Sede& sede = en_carpeta())
        : banco(sede)
    {
    }

    /// With the range of days in which the charges of `banco` lie.
    void abre(const char* desde = "01/11/2026", const char* hasta = "30/11/2026")
    {
        form.Fecha_Inicial = dia(desde);
        form.Fecha_Final = dia(hasta);
        abre_sin_rango();
    }

    void abre_sin_rango()
    {
        form.Show();
        activa();
    }

    /// Opens it and searches by keys.
    void abre_y_busca(const char* desde = "01/11/2026", const char* hasta = "30/11/2026")
    {
        abre(desde, hasta);
        c<>("txtFechaF").setFocus();
        busca();
        banco.parte->dichas.clear();
    }

    void busca() { pulsa(Qt::Key_Return); }

    /// Without a window manager nobody goes back to the window behind one that has closed.
    void activa()
    {
        form.activateWindow();
        if (!QTest::qWaitForWindowActive(&form, atipicos::pruebas::paciencia))
            qFatal("the browser does not become active");
    }

    template <class T = QWidget> T& c(const char* nombre)
    {
        auto* hallado = form.findChild<T*>(QLatin1String(nombre));
        if (hallado == nullptr)
            qFatal("the browser has no %s", nombre);
        return *hallado;
    }
    VSFlexGrid& lista() { return c<VSFlexGrid>("vsCab"); }
    VSFlexGrid& lineas() { return c<VSFlexGrid>("vsDetalles"); }
    QTabWidget& pestanas() { return c<QTabWidget>("Tabs"); }
    QString estado() { return c<QLabel>("lblEstado").text(); }
    QString texto(const char* nombre) { return c<QLineEdit>(nombre).text(); }
    QLineEdit& codigo(const char* selector)
    {
        return *c<>(selector).findChild<QLineEdit*>(QStringLiteral("txtCodigo"));
    }
    QString nombre(const char* selector)
    {
        return c<>(selector).findChild<QLineEdit*>(QStringLiteral("lblNombre"))->text();
    }

    void pulsa(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        QTest::keyClick(form.focusWidget(), tecla, con);
    }
    void clic(const char* boton) { QTest::mouseClick(&c<QPushButton>(boton), Qt::LeftButton); }

    static QString fila(const VSFlexGrid& rejilla, int numero)
    {
        QStringList celdas;
        for (int columna = 0; columna < rejilla.Cols(); ++columna)
            celdas << rejilla.TextMatrix(numero, columna);
        return celdas.join(u'|');
    }
    /// Code and warehouse of every charge listed, as in "AT260002/1 AT260001/1".
    QString listados()
    {
        QStringList cargos;
        for (int numero = 1; numero < lista().Rows(); ++numero)
            cargos << lista().TextMatrix(numero, 0) + u'/' + lista().TextMatrix(numero, 1);
        return cargos.join(u' ');
    }
    /// "enabled", "disabled", or those that are when the others are not.
    QString comandos()
    {
        QStringList habilitados;
        for (const auto* nombre : { "cmdExportar", "cmdImprimir", "cmdModificar", "cmdEliminar" })
            if (c<>(nombre).isEnabled())
                habilitados << QLatin1String(nombre);
        if (pestanas().isTabEnabled(1))
            habilitados << QStringLiteral("Detalles");
        return habilitados.size() == 5 ? QStringLiteral("enabled")
            : habilitados.isEmpty()    ? QStringLiteral("disabled")
                                       : habilitados.join(u' ');
    }

    /// Writes a header straight into the table: what a save would not write, or not on that day.
    void graba(const char* codigo, const char* fecha, const char* resto = "")
    {
        banco.bases().orvalin->Execute(
            std::string(
                "INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, Codigo, "
                "Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, Observ, "
                "Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, 2026, 1, '")
            + codigo + "', 101, '" + fecha + "', 10, 0, 0, 0, 1, '" + fecha + "', '', 0, 0, 0, 0, 0)");
        if (*resto != '\0')
            banco.bases().orvalin->Execute(std::string("UPDATE Proveedores_Cargos_Atipicos SET ") + resto
                + " WHERE Codigo = '" + codigo + "'");
    }
};

} // namespace atipicos::pruebas
