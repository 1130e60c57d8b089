#pragma once

#include "context/modComun.hpp"
#include "controls/VSFlexGrid.hpp"
#include "host/sql/Guiones.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "tests/integracion/Volcado.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSettings>

#include <memory>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// The program with its main window on a sample company, which can go away and come back as a new process
/// would find things. User 2, 21/11/2026 at 12:40:07.
class EscenaBorrador {
public:
    EscenaBorrador()
    {
        QSettings().clear();
        opciones.datos = carpeta / "datos";
        opciones.usuario = 2;
        bases::crea_bases(opciones.lugar(), false);
        reloj->valor = dia_y_hora("21/11/2026", 12, 40, 7);
        abre();
    }
    EscenaBorrador(const EscenaBorrador&) = delete;
    EscenaBorrador& operator=(const EscenaBorrador&) = delete;
    ~EscenaBorrador() { vacia_contexto(); }

    void abre()
    {
        sesion = std::make_unique<app::Sesion>(opciones);
        sesion->borradores = std::make_shared<app::BorradoresEnCarpeta>(
            estado(), app::DuenoDeBorradores{ "la muestra", 1, 2 });
        modComun::set_Borradores(sesion->borradores);
        modComun::set_MsgBox(avisos);
        modComun::set_Reloj(reloj);
        ventana = std::make_unique<app::frmPrincipal>(*sesion, opciones);
        ventana->show();
        if (!QTest::qWaitForWindowActive(ventana.get(), atipicos::pruebas::paciencia))
            qFatal("the main window is not active");
    }

    /// All windows end with what is keyed in, and the program is started again.
    void cierra_y_abre()
    {
        ventana.reset();
        sesion.reset();
        abre();
    }

    [[nodiscard]] std::filesystem::path estado() const { return carpeta / "estado" / "1-2"; }
    [[nodiscard]] QWidget& editor() const { return control<QWidget>(*ventana, "frmCompras_Atipicos"); }
    [[nodiscard]] VSFlexGrid& rejilla() const { return control<VSFlexGrid>(editor(), "vsCargos"); }
    [[nodiscard]] QListWidget& lista() const { return control<QListWidget>(*ventana, "lstBorradores"); }
    [[nodiscard]] bool ofrece() const { return control<>(*ventana, "fraBorradores").isVisible(); }

    [[nodiscard]] QStringList ofrecidos() const
    {
        QStringList textos;
        for (int fila = 0; fila < lista().count(); ++fila)
            textos << lista().item(fila)->text();
        return textos;
    }

    /// The files that are kept, locks and all.
    [[nodiscard]] std::vector<std::string> ficheros() const
    {
        std::vector<std::string> nombres;
        std::error_code fallo;
        for (std::filesystem::directory_iterator uno(estado(), fallo), fin; !fallo && uno != fin; ++uno)
            nombres.push_back(uno->path().filename().string());
        return nombres;
    }

    /// Every row of both products.
    [[nodiscard]] std::vector<std::string> todo() const
    {
        auto filas = vuelca(*sesion->bases.orvalin, guiones::orvalin());
        const auto contables = vuelca(*sesion->bases.bexmor, guiones::bexmor());
        filas.insert(filas.end(), contables.begin(), contables.end());
        return filas;
    }

    [[nodiscard]] std::string dice(const std::string& sql) const
    {
        const auto rs = sesion->bases.orvalin->CreateRecordset();
        rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
        return rs->Eof() ? std::string() : CStr(rs->Fields("v").Value());
    }

    /// Fields and Enter in each; "=" leaves what is there.
    static void teclea_linea(const std::vector<const char*>& campos)
    {
        for (const auto* campo : campos) {
            if (QLatin1String(campo) != QLatin1String("=")) {
                pulsa(Qt::Key_A, Qt::ControlModifier);
                pulsa(Qt::Key_Delete);
                teclea(campo);
            }
            intro();
        }
        intro(); // in the amount: accepts the line
    }

    /// A charge in which nothing is as an empty form has it: warehouse, day, remarks, franchise, decimals, a
    /// line without article, one that has kept the account of another article.
    void teclea_cargo() const
    {
        control<>(*ventana, "cmdReclamaciones").setFocus();
        intro();
        QTRY_COMPARE(foco(), QStringLiteral("txtAlmacen"));
        teclea("3");
        intro();
        teclea("106");
        intro();
        teclea("09102026");
        intro();
        teclea("Palé dañado");
        intro();
        pulsa(Qt::Key_Space); // franchise
        intro();
        teclea_linea({ "1003", "=", "Pérgola", "12,485", "9,75" });
        teclea_linea({ "", "Porte", "", "-1", "14,5" });
        teclea_linea({ "1001", "=", "sin gas", "3", "2,125" });
        rejilla().set_Row(1);
        clic(editor(), "cmdModificar");
        teclea_linea({ "1010", "Queso con grietas", "=", "12,485", "=" });
    }

    /// Accepts it with the forecasts as they are proposed, and does not print.
    void acepta(QWidget& en) const
    {
        const AlAbrirse contabilizar([](QWidget&) { pulsa(Qt::Key_F9); }, "frmCompras_Atipicos_Contabilizar");
        const AlAbrirse impresora([](QWidget& dialogo) { clic(dialogo, "cmdCancelar"); }, "frmImpresora");
        clic(en, "cmdAceptar");
    }

    CarpetaTemporal carpeta;
    app::OpcionesComunes opciones;
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    std::shared_ptr<RelojDePrueba> reloj = std::make_shared<RelojDePrueba>();
    std::unique_ptr<app::Sesion> sesion;
    std::unique_ptr<app::frmPrincipal> ventana;
};

} // namespace atipicos::pruebas
