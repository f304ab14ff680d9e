#include "platform/process.h"

#include <windows.h>

#include <bcrypt.h>
#include <shellapi.h>

#include <memory>

#include "platform/error.h"
#include "platform/win32/argument_text.h"
#include "platform/win32/com.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

Text& CommandLineText() {
    static Text text;
    return text;
}

}  // namespace

/// The words that the start-up code cut out of it have lost their quotes.
void SetCommandLine(int, const char* const*) {
    CommandLineText() = ArgumentText(GetCommandLineW());
}

/// Those that main gets are in the system's 8-bit character set.
std::vector<Text> ProgramWords(int, const char* const*) {
    int count = 0;
    const std::unique_ptr<wchar_t*, HLOCAL(WINAPI*)(HLOCAL)> arguments(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    std::vector<Text> words;
    for (int index = 1; arguments && index < count; ++index)
        words.push_back(Narrow(arguments.get()[index]));
    return words;
}

Text CommandLine() {
    return CommandLineText();
}

Text ExecutablePath() {
    std::wstring path;
    for (DWORD size = MAX_PATH;; size *= 2) {
        path.resize(size);
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), size);
        if (length < size) return Narrow(path.substr(0, length));
    }
}

std::uint32_t ProcessId() {
    return GetCurrentProcessId();
}

void ExitProcessNow(int code) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    for (;;)
        Sleep(INFINITE);
}

bool OpenDocument(const Text& address) {
    const ComScope components;
    const std::wstring file = Wide(address);
    SHELLEXECUTEINFOW order{};
    order.cbSize = sizeof order;
    order.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    order.lpFile = file.c_str();
    order.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&order) != 0;
}

std::uint64_t SystemRandom() {
    std::uint64_t value = 0;
    const NTSTATUS status = BCryptGenRandom(nullptr, reinterpret_cast<UCHAR*>(&value), sizeof value,
                                            BCRYPT_USE_SYSTEM_PREFERRED_RNG);
    if (!BCRYPT_SUCCESS(status))
        throw Error(kApplicationErrorBase + 2, "SystemRandom", "Random numbers are not available");
    return value;
}

}  // namespace rvl::platform
