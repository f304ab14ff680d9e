#include "tests/support/child_process.h"

#include <windows.h>

#include "platform/process.h"
#include "tests/support/win32/utf16.h"
#include "tests/support/workstation.h"

namespace rvl::test {
namespace {

constexpr const char* kVariable = "RVL_TEST_CHILD";
constexpr UINT kKilledCode = 0xDEAD;

HANDLE HandleOf(std::intptr_t process) {
    return reinterpret_cast<HANDLE>(process);
}

}  // namespace

const int kAffordableProcesses = 12;

ChildProcess::ChildProcess(const std::string& test, const std::string& argument) {
    std::wstring command = Utf16("\"" + ThisProgram() + "\" " + ChildArguments(test));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    SetEnvironment(kVariable, argument);
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process))
        m_exitCode = 127;
    UnsetEnvironment(kVariable);
    if (process.hThread != nullptr) CloseHandle(process.hThread);
    m_handle = reinterpret_cast<std::intptr_t>(process.hProcess);
    m_id = process.dwProcessId;
}

bool ChildProcess::HasEnded() {
    if (m_handle == 0) return true;
    if (WaitForSingleObject(HandleOf(m_handle), 0) != WAIT_OBJECT_0) return false;
    DWORD code = 0;
    GetExitCodeProcess(HandleOf(m_handle), &code);
    CloseHandle(HandleOf(m_handle));
    m_handle = 0;
    m_exitCode = code == kKilledCode ? kKilled : static_cast<int>(code);
    return true;
}

int ChildProcess::Wait() {
    if (m_handle != 0) WaitForSingleObject(HandleOf(m_handle), INFINITE);
    HasEnded();
    return m_exitCode;
}

void ChildProcess::Kill() {
    if (m_handle != 0) TerminateProcess(HandleOf(m_handle), kKilledCode);
}

std::string ChildProcess::Argument() {
    std::wstring value(GetEnvironmentVariableW(Utf16(kVariable).c_str(), nullptr, 0), L'\0');
    value.resize(
        GetEnvironmentVariableW(Utf16(kVariable).c_str(), value.data(), static_cast<DWORD>(value.size())));
    return {value.begin(), value.end()};
}

std::string ThisProgram() {
    return Utf8FromText(platform::ExecutablePath());
}

std::string StartedAs() {
    const std::wstring line = GetCommandLineW();
    std::string text;
    for (const wchar_t character : line)
        text += character < 0x80 ? static_cast<char>(character) : '?';
    return text;
}

void KillProcess(std::uint32_t process) {
    const HANDLE handle = OpenProcess(PROCESS_TERMINATE, FALSE, process);
    if (handle == nullptr) return;
    TerminateProcess(handle, kKilledCode);
    CloseHandle(handle);
}

}  // namespace rvl::test
