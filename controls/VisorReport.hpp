#pragma once

#include "platform/report/Report.hpp"

#include <QWidget>

#include <memory>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QToolBar;

namespace atipicos {

class VistaReport;

/// Shows a report: pages, zoom, search where the report offers it, print, save as PDF.
class VisorReport : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(VisorReport)
public:
    explicit VisorReport(QWidget* parent = nullptr);

    // What the tool bar offers; all of it off until it is switched on.
    void set_BotonImprimir(bool visible);
    void set_BotonGuardar(bool visible);
    void set_BotonCerrar(bool visible);

    void set_ReportSource(std::shared_ptr<const Report> report); ///< nothing is shown until `ViewReport`
    void ViewReport(); ///< without a report the view is empty

    /// 0 or 1: as wide as the view; 2: whole pages; from 25 to 400, percent of the paper.
    void Zoom(int zoom);

signals:
    void Cerrar(); ///< the person asks for the view to be closed

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    void agrega_paginas();
    void agrega_zoom();
    void agrega_busqueda();
    QAction* accion(const char* nombre, const char* texto, const char* ayuda, const QKeySequence& teclas);
    void cmdImprimir_Click();
    void cmdGuardar_Click();
    void txtBuscar_Cambio();
    void busca_siguiente(int paso);
    void muestra_pagina();
    void muestra_zoom();

    std::shared_ptr<const Report> m_report;
    std::shared_ptr<const Report> m_visto; ///< the one in the view
    QToolBar* m_barra;
    VistaReport* m_vista;
    QSpinBox* m_pagina = nullptr;
    QLabel* m_paginas = nullptr;
    QComboBox* m_zoom = nullptr;
    QLineEdit* m_buscar = nullptr;
    QAction* m_accion_buscar = nullptr;
    QLabel* m_hallados = nullptr;
    QAction* m_imprimir = nullptr;
    QAction* m_guardar = nullptr;
    QAction* m_cerrar = nullptr;
    std::vector<Hallazgo> m_hallazgos;
    std::size_t m_actual = 0;
};

} // namespace atipicos
