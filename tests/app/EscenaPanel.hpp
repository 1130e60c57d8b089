#pragma once

#include "context/modComun.hpp"
#include "host/ventanas/frmPrincipal.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/Contexto.hpp"
#include "tests/support/Paciencia.hpp"
#include "tests/support/Persona.hpp"

#include <QLabel>
#include <QTableView>

namespace atipicos::pruebas {

/// The main window on a sample company with charges put straight into their table, on a day of its own.
struct EscenaPanel {
    CarpetaTemporal carpeta;
    app::OpcionesComunes opciones;
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    std::shared_ptr<RelojDePrueba> reloj = std::make_shared<RelojDePrueba>();
    std::unique_ptr<app::Sesion> sesion;
    std::unique_ptr<app::frmPrincipal> ventana;

    EscenaPanel()
    {
        opciones.datos = carpeta / "datos";
        opciones.usuario = 3;
        bases::crea_bases(opciones.lugar(), false);
        sesion = std::make_unique<app::Sesion>(opciones);
        reloj->valor = dia("17/06/2026");
        modComun::set_Reloj(reloj);
        modComun::set_MsgBox(avisos);
        pon("AT260001", 2, "17/06/2026", 103, "100", 31);
        pon("AT260002", 3, "02/06/2026", 106, "40", 0);
        pon("AT250001", 4, "05/06/2025", 106, "70", 32);
        pon("AT260003", 2, "17/06/2026", 104, "5", 33);
        ventana = std::make_unique<app::frmPrincipal>(*sesion, opciones);
    }
    ~EscenaPanel() { vacia_contexto(); }

    void abre() const
    {
        ventana->show();
        if (!QTest::qWaitForWindowActive(ventana.get(), atipicos::pruebas::paciencia))
            qFatal("the main window is not active");
    }

    void pon(const char* codigo, int almacen, const char* fecha, int proveedor, const char* importe,
        int asiento) const
    {
        const std::string del = std::string(fecha).substr(6) + ", " + std::to_string(almacen);
        auto& orvalin = *sesion->bases.orvalin;
        orvalin.Execute("DELETE FROM Contador_Proveedores_Cargos_Atipicos");
        orvalin.Execute("INSERT INTO Contador_Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, "
                        "Cod_Almacen, Numero) VALUES (1, "
            + del + ", 90)");
        orvalin.Execute("INSERT INTO Proveedores_Cargos_Atipicos (Cod_Empresa, Cod_Ejercicio, Cod_Almacen, "
                        "Codigo, Proveedor, Fecha, Importe, Asiento, EmpContable, EjContable, Usuario, Hora, "
                        "Observ, Cod_Compra, Documento, Impuesto, Impuesto_Importe, Tipo) VALUES (1, "
            + del + ", '" + codigo + "', " + std::to_string(proveedor) + ", '" + fecha + "', " + importe
            + ", " + std::to_string(asiento) + ", 1, 2026, 2, '" + fecha + "', 'Palé', 0, 0, 7, 0.07, 0)");
    }

    [[nodiscard]] QString celda(int fila, int columna) const
    {
        const auto& lista = control<QTableView>(*ventana, "vsUltimos");
        return lista.model()->index(fila, columna).data().toString();
    }
    [[nodiscard]] int filas() const { return control<QTableView>(*ventana, "vsUltimos").model()->rowCount(); }
    [[nodiscard]] QString dice(const char* nombre) const { return control<QLabel>(*ventana, nombre).text(); }
    [[nodiscard]] QWidget* visor() const
    {
        auto* form = ventana->findChild<QWidget*>(QStringLiteral("frmCompras_Atipicos_Visor"));
        return form != nullptr && form->isVisible() ? form : nullptr;
    }
};

} // namespace atipicos::pruebas
