#include "platform/win32/readable_text.h"

namespace rvl::platform {

Text ReadableText(std::wstring_view wide) {
    Text text;
    for (const wchar_t character : wide) {
        const bool isSecondHalf = character >= 0xDC00 && character <= 0xDFFF;
        if (!isSecondHalf) text += character < 256 ? static_cast<char>(character) : '?';
    }
    return text;
}

}  // namespace rvl::platform
