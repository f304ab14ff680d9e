#pragma once

#include <optional>

#include "tools/msaccess/desktop.h"
#include "tools/msaccess/order.h"

namespace rvl::msaccess {

/// What the title bar says of the open database (its file name); empty: none is open.
Text MainTitle(const Text& database);

/// The "OMain" window of one Access, which shows itself as a running Access object and carries out orders.
class MainWindow {
 public:
    /// Shows the window; the database is a full path, empty for none.
    MainWindow(const Desktop& desktop, const Text& database);

    void Perform(const Order& order);

    /// Until it is closed or told to end; the exit code.
    int Run();

 private:
    void Open(const Text& database);
    void ShowCantMakeChanges();
    void HandleEvent(const XEvent& event);
    void CloseRequested(Window window);
    void Paint() const;

    const Desktop& m_desktop;
    Window m_window;
    Window m_dialog = None, m_dialogText = None;  ///< None while it is not shown
    Text m_database;                              ///< file name
    bool m_ignoresClose = false;
    std::optional<int> m_exitCode;
};

}  // namespace rvl::msaccess
