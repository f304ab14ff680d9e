#include "tests/support/host_shell.h"

#include <windows.h>

#include <filesystem>

#include "tests/support/win32/utf16.h"
#include "tests/support/workstation.h"

namespace rvl::test {

/// Wine starts programs of the host like those of Windows, in the same folder, but neither passes them pipes
/// nor tells when they end: the output comes as a file.
std::string OutputOf(const std::string& command, const std::string& where) {
    const std::string folder = where.empty() ? DriveC() + "/windows/temp" : where;
    const std::string script = folder + "/rvl-test.sh", output = folder + "/rvl-test.out";
    WriteHostFile(script, "{ " + command +
                              "\n} >rvl-test.part 2>&1\n"
                              "mv rvl-test.part rvl-test.out\n");
    std::wstring line = L"Z:\\bin\\sh rvl-test.sh";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    std::string content;
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, Utf16(folder + "/").c_str(),
                       &start, &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        RunUntil([&] { return std::filesystem::exists(output); });
        content = ReadHostFile(output);
    }
    for (const std::string& file : {script, output})
        std::filesystem::remove(file);
    return content;
}

}  // namespace rvl::test
