#pragma once

#include "host/graficos/EstiloGrafico.hpp"
#include "host/resumen/ResumenCargos.hpp"

#include <QString>

#include <memory>

class QChart;

/// The charts of a summary. They hold pictures of the numbers, as doubles; the numbers themselves are told in
/// tables.
namespace atipicos::app {

/// Months before the last so many have no bars.
inline constexpr std::size_t barras_por_mes = 24;

/// What the bars are of: "Total por proveedor", "Total por mes, los últimos 24".
[[nodiscard]] QString titulo_de_barras(const ResumenCargos& resumen);

/// A bar for each group, lying, or standing for months; a second one for the year before, where there is any.
[[nodiscard]] std::unique_ptr<QChart> grafico_de_barras(
    const ResumenCargos& resumen, const EstiloGrafico& estilo);

/// A line through the months of `meses`, and a broken one for those of the year before, where there is any.
[[nodiscard]] std::unique_ptr<QChart> grafico_de_meses(
    const ResumenCargos& meses, const EstiloGrafico& estilo);

} // namespace atipicos::app
