#include "tools/msaccess/desktop_program.h"

#include <windows.h>

#include <shellapi.h>

#include "platform/win32/com.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handle.h"
#include "tools/msaccess/win32/main_window.h"

namespace rvl::msaccess {

/// Those that main gets are in the system's 8-bit character set.
std::vector<Text> ProgramArguments(int, const char* const*) {
    std::vector<Text> arguments;
    int count = 0;
    const std::unique_ptr<wchar_t*, HLOCAL(WINAPI*)(HLOCAL)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    for (int index = 1; words && index < count; ++index)
        arguments.push_back(platform::Narrow(words.get()[index]));
    return arguments;
}

int RunMainWindow(const Text& database, const std::vector<Order>& orders) {
    const platform::ComScope com;
    MainWindow window(database);
    window.Program().Perform(orders);
    return window.Run();
}

bool SendOrder(std::uint32_t mainWindow, const Text& order) {
    Text bytes = order;
    COPYDATASTRUCT data{kOrderMark, static_cast<DWORD>(bytes.size()), bytes.data()};
    DWORD_PTR taken = FALSE;
    return SendMessageTimeoutW(platform::HwndOf(mainWindow), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                               SMTO_ABORTIFHUNG, platform::kAnswerMilliseconds, &taken) != 0 &&
           taken != FALSE;
}

}  // namespace rvl::msaccess
