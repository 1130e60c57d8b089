#pragma once

#include <string>
#include <string_view>

/// Texts as UTF-16 counts and sends them.
namespace atipicos {

[[nodiscard]] std::u16string a_utf16(std::string_view utf8); ///< what is no UTF-8 becomes U+FFFD
[[nodiscard]] std::string a_utf8(std::u16string_view utf16); ///< half a pair becomes U+FFFD

} // namespace atipicos
