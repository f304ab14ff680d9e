#include "tools/msaccess/desktop_program.h"

#include "platform/process.h"
#include "tools/msaccess/posix/main_window.h"

namespace rvl::msaccess {
namespace {

constexpr int kFailed = 1;

bool IsThere(const Desktop& desktop) {
    if (!desktop.IsOpen()) platform::WriteStandardError("msaccess: there is no display");
    return desktop.IsOpen();
}

}  // namespace

int RunMainWindow(const Text& database, const std::vector<Order>& orders) {
    const Desktop desktop;
    if (!IsThere(desktop)) return kFailed;
    MainWindow window(desktop, database);
    window.Program().Perform(orders);
    return window.Run();
}

bool SendOrder(std::uint32_t mainWindow, const Text& order) {
    const Desktop desktop;
    if (!IsThere(desktop)) return false;
    desktop.SetText(mainWindow, kOrderProperty, order);
    XSync(desktop.Get(), False);  // ends the program when there is no such window
    return true;
}

}  // namespace rvl::msaccess
