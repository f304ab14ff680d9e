#include <windows.h>

#include <array>

#include "platform/process.h"
#include "platform/win32/unique_handle.h"
#include "platform/win32/utf8.h"
#include "platform/win32/wide.h"

namespace rvl::platform {
namespace {

bool IsConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

void WriteTo(HANDLE handle, const std::wstring& text) {
    DWORD written = 0;
    if (IsConsole(handle)) {
        WriteConsoleW(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    } else {
        const std::string utf8 = Utf8(text);
        WriteFile(handle, utf8.data(), static_cast<DWORD>(utf8.size()), &written, nullptr);
    }
}

/// The console of the process that started this one, for the life of the object: kept any longer, its closing
/// would end this process. It leaves handles of its own behind, which later name something else.
class ParentConsole {
 public:
    ParentConsole() {
        for (std::size_t index = 0; index < kStandard.size(); ++index)
            m_before[index] = GetStdHandle(kStandard[index]);
        m_attached = AttachConsole(ATTACH_PARENT_PROCESS) != 0;
        if (m_attached)
            m_output = OwnHandle(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                             FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                             nullptr));
    }
    ~ParentConsole() {
        if (!m_attached) return;
        m_output.reset();
        FreeConsole();
        for (std::size_t index = 0; index < kStandard.size(); ++index)
            SetStdHandle(kStandard[index], m_before[index]);
    }
    ParentConsole(const ParentConsole&) = delete;
    ParentConsole& operator=(const ParentConsole&) = delete;

    HANDLE Output() const { return m_output.get(); }

 private:
    static constexpr std::array<DWORD, 3> kStandard{STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    std::array<HANDLE, 3> m_before{};
    bool m_attached = false;
    UniqueHandle m_output;
};

}  // namespace

/// A program with windows has a standard error only where it was redirected.
void WriteStandardError(const Text& line) {
    const std::wstring text = Wide(line) + L"\r\n";
    const HANDLE given = GetStdHandle(STD_ERROR_HANDLE);
    if (GetFileType(given) != FILE_TYPE_UNKNOWN) return WriteTo(given, text);
    if (const ParentConsole console; console.Output() != nullptr) WriteTo(console.Output(), text);
}

}  // namespace rvl::platform
