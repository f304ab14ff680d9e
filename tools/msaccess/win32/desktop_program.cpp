#include "tools/msaccess/desktop_program.h"

#include <windows.h>

#include "platform/win32/com.h"
#include "platform/win32/window_handle.h"
#include "tools/msaccess/win32/main_window.h"

namespace rvl::msaccess {

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
