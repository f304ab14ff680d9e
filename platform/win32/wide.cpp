#include "platform/win32/wide.h"

#include <algorithm>

namespace rvl::platform {

std::wstring Wide(TextView text) {
    std::wstring wide(text.size(), L'\0');
    std::transform(text.begin(), text.end(), wide.begin(),
                   [](char character) { return static_cast<unsigned char>(character); });
    return wide;
}

Text Narrow(std::wstring_view wide) {
    return WideToNarrow(std::u16string(wide.begin(), wide.end()));
}

std::optional<Text> TryNarrow(std::wstring_view wide) {
    const bool fits =
        std::all_of(wide.begin(), wide.end(), [](wchar_t character) { return character < 256; });
    return fits ? std::optional(Narrow(wide)) : std::nullopt;
}

}  // namespace rvl::platform
