#pragma once

#include "controls/VSFlexGrid.hpp"

namespace atipicos {

/// Keeps the rows that are added to a grid from its view; the view gets them at once when this ends.
class SinDibujar {
public:
    explicit SinDibujar(VSFlexGrid& rejilla)
        : m_rejilla(rejilla)
    {
        m_rejilla.set_Redraw(false);
    }
    SinDibujar(const SinDibujar&) = delete;
    SinDibujar& operator=(const SinDibujar&) = delete;
    ~SinDibujar() { m_rejilla.set_Redraw(true); }

private:
    VSFlexGrid& m_rejilla;
};

} // namespace atipicos
