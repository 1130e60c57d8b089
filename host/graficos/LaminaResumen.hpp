#pragma once

#include "host/resumen/ResumenCargos.hpp"

#include <QSize>

class QPainter;

namespace atipicos::app {

/// A sheet with what was asked for, its totals, and both charts, in units of `medida`; `pintor` may draw it
/// larger.
class LaminaResumen {
public:
    static constexpr QSize medida{ 900, 1100 };

    /// `resumen` and `meses` outlive it.
    LaminaResumen(const ResumenCargos& resumen, const ResumenCargos& meses);

    void pinta(QPainter& pintor) const;

private:
    void pinta_cabecera(QPainter& pintor) const;

    const ResumenCargos& m_resumen;
    const ResumenCargos& m_meses;
};

} // namespace atipicos::app
