#pragma once

#include "tools/msaccess/access_program.h"
#include "tools/msaccess/posix/desktop.h"

namespace rvl::msaccess {

/// The "OMain" window of one Access, which shows itself as a running Access object.
class MainWindow : public AccessView {
 public:
    MainWindow(const Desktop& desktop, const Text& database);

    AccessProgram& Program() { return m_program; }

    /// Until it is closed or told to end; the exit code.
    int Run();

 private:
    Window CreateWindow() const;
    void ShowDatabase(const Text& path) override;
    void ShowCantMakeChanges(const Text& message) override;
    void Paint() override;
    void HandleEvent(const XEvent& event);
    void CloseRequested(Window window);

    const Desktop& m_desktop;
    Window m_window;
    Window m_dialog = None, m_dialogText = None;  ///< None while it is not shown
    Text m_database;                              ///< file name
    Text m_message;                               ///< of the dialog
    AccessProgram m_program;
};

}  // namespace rvl::msaccess
