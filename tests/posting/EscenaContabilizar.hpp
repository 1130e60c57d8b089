#pragma once

#include "controls/VSFlexGrid.hpp"
#include "posting/frmCompras_Atipicos_Contabilizar.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"
#include "tests/support/Ventanas.hpp"

#include <QLabel>
#include <QPushButton>

#include <memory>

namespace atipicos::pruebas {

/// The dialog for 150,00 to be paid to a supplier of three instalments, on the sample company.
struct EscenaContabilizar {
    Banco banco;
    std::unique_ptr<frmCompras_Atipicos_Contabilizar> dialogo;

    explicit EscenaContabilizar(bool proponer = true, const char* importe = "150",
        std::int32_t proveedor = 104, const char* fecha = "21/11/2026")
    {
        dialogo = std::make_unique<frmCompras_Atipicos_Contabilizar>(
            Contabilizacion{ moneda(importe), proveedor, dia(fecha), 1, proponer });
        dialogo->show();
        if (!QTest::qWaitForWindowActive(dialogo.get(), paciencia))
            qFatal("the dialog is not active");
    }

    VSFlexGrid& rejilla() { return control<VSFlexGrid>(*dialogo, "vsPrev"); }
    QString resto() { return control<QLabel>(*dialogo, "lblResto").text(); }
    bool puede_eliminar() { return control<QPushButton>(*dialogo, "cmdPrevEliminar").isEnabled(); }

    /// Amount, type, bank and due date, each ended by Enter; "=" leaves what the dialog proposes.
    static void teclea_prevision(
        const char* importe, const char* tipo, const char* banco, const char* vencimiento)
    {
        const auto campo = [](const char* texto) {
            if (QLatin1String(texto) != QLatin1String("=")) {
                pulsa(Qt::Key_A, Qt::ControlModifier);
                pulsa(Qt::Key_Delete);
                teclea(texto);
            }
            intro();
        };
        campo(importe);
        campo(tipo);
        campo(banco);
        campo(vencimiento);
    }
};

} // namespace atipicos::pruebas
