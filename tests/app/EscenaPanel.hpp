#pragma once

#include "tests/app/EscenaPrograma.hpp"

#include <QLabel>
#include <QTableView>

namespace atipicos::pruebas {

/// The main window on a sample company with charges put straight into their table, on a day of its own.
struct EscenaPanel : EscenaPrograma {
    EscenaPanel()
        : EscenaPrograma(3, "17/06/2026")
    {
        pon("AT260001", 2, "17/06/2026", 103, "100", 31);
        pon("AT260002", 3, "02/06/2026", 106, "40", 0);
        pon("AT250001", 4, "05/06/2025", 106, "70", 32);
        pon("AT260003", 2, "17/06/2026", 104, "5", 33);
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
