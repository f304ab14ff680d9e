#pragma once

#include <string>
#include <string_view>

namespace rvl {

/// A text of the system: one byte per character, codes 0-255 (ISO 8859-1), NUL allowed.
using Text = std::string;
using TextView = std::string_view;

/// The only conversions between Text and what operating systems (UTF-16, UTF-8) and the database (UTF-8)
/// hold. A character above 255 raises the error "Conversion would cause data loss".
Text WideToNarrow(std::u16string_view wide);
std::u16string NarrowToWide(TextView narrow);

/// Malformed UTF-8 raises the same error: what cannot be read cannot become a Text.
Text TextFromUtf8(std::string_view utf8);
std::string Utf8FromText(TextView text);

}  // namespace rvl
