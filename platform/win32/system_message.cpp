#include "platform/system_message.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string_view>

#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

struct FreeLocal {
    void operator()(wchar_t* text) const { LocalFree(text); }
};

/// None when the system has no message in the language, or none that can become a Text.
std::optional<Text> MessageIn(DWORD language, int code) {
    constexpr DWORD kFlags =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    wchar_t* buffer = nullptr;
    const DWORD length = FormatMessageW(kFlags, nullptr, static_cast<DWORD>(code), language,
                                        reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    const std::unique_ptr<wchar_t, FreeLocal> owned(buffer);
    if (length == 0) return std::nullopt;
    std::wstring_view message(buffer, length);
    message = message.substr(0, message.find_last_not_of(L"\r\n ") + 1);
    return TryNarrow(message);
}

}  // namespace

Text SystemMessage(int code) {
    constexpr std::size_t kLongest = 255;
    const DWORD english = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    std::optional<Text> message = MessageIn(MAKELANGID(LANG_NEUTRAL, SUBLANG_NEUTRAL), code);
    if (!message) message = MessageIn(english, code);
    return message ? message->substr(0, kLongest) : "";
}

}  // namespace rvl::platform
