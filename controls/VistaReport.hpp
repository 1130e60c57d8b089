#pragma once

#include "controls/LienzoQt.hpp"
#include "platform/report/Report.hpp"

#include <QAbstractScrollArea>

#include <memory>

namespace atipicos {

/// The pages of a report one below the other, as they are on paper, in any size.
class VistaReport final : public QAbstractScrollArea {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(VistaReport)
public:
    enum class Ajuste : std::uint8_t { Ninguno, Ancho, PaginaEntera };

    explicit VistaReport(QWidget* parent = nullptr);

    void set_Report(std::shared_ptr<const Report> report); ///< nullptr: nothing is shown

    [[nodiscard]] int Paginas() const;
    [[nodiscard]] int Pagina() const; ///< the one being looked at, from 1; 0 without a report
    void set_Pagina(int pagina); ///< brings it into view; out of range: the nearest

    [[nodiscard]] int Zoom() const; ///< in percent of the paper
    void set_Zoom(int porcentaje); ///< 25 to 400
    void set_Ajuste(Ajuste ajuste); ///< the zoom follows the size of the view

    /// Marks the places, one of them more than the rest, and brings that one into view.
    void resalta(std::vector<Hallazgo> hallazgos, std::size_t actual);

signals:
    void PaginaCambiada();
    void ZoomCambiado();

protected:
    void keyPressEvent(QKeyEvent* tecla) override;
    void paintEvent(QPaintEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* evento) override;

private:
    [[nodiscard]] double puntos_por_pulgada() const;
    [[nodiscard]] QSize tamano_pagina() const; ///< in pixels
    [[nodiscard]] QRect lugar(int pagina) const; ///< from 0, in the view
    [[nodiscard]] QRect lugar(const Hallazgo& hallazgo) const;
    void pon_zoom(int porcentaje);
    void ajusta();
    void pon_barras();
    void pinta_resaltes(QPainter& pintor, int pagina) const;

    std::shared_ptr<const Report> m_report;
    FuentesUsadas m_fuentes;
    std::vector<Hallazgo> m_hallazgos;
    std::size_t m_actual = 0;
    Ajuste m_ajuste = Ajuste::Ancho;
    int m_zoom = 100;
};

} // namespace atipicos
