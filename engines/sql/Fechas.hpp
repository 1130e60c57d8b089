#pragma once

#include "runtime/Date.hpp"

#include <optional>
#include <string>
#include <string_view>

/// Dates as they stand in statements and as databases without a date type keep them.
namespace atipicos::sql {

/// What SQL Server (session language day/month/year) reads in a text where a date is wanted: `dd/mm/yyyy`,
/// with ` h:mm` or ` h:mm:ss`; a time alone falls on 1 January 1900, and so does an empty text. Years from
/// 1753 on. Nothing when it cannot be read.
[[nodiscard]] std::optional<Date> lee_fecha_regional(std::string_view texto);

/// ISO 8601 text: `yyyy-mm-dd`, with ` hh:mm:ss` when there is a time of day and `.mmm` when there are
/// milliseconds. One text for one value, and their order is that of time.
[[nodiscard]] std::string texto_iso(Date fecha);
[[nodiscard]] std::optional<Date> lee_iso(std::string_view texto);

} // namespace atipicos::sql
