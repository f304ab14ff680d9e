#pragma once

#include <windows.h>

#include <memory>

#include "tools/msaccess/access_program.h"
#include "tools/msaccess/win32/running_application.h"

namespace rvl::msaccess {

/// Marks an order among what programs copy to each other (WM_COPYDATA).
inline constexpr ULONG_PTR kOrderMark = 0x4F52444D;

/// The "OMain" window of one Access, which registers itself as a running object once it is asked to or loses
/// the keyboard.
class MainWindow : public AccessView {
 public:
    explicit MainWindow(const Text& database);
    ~MainWindow() override;
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    AccessProgram& Program() { return m_program; }

    /// Until it is closed or told to end; the exit code.
    int Run();

 private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    HWND CreateMain();
    void ShowDatabase(const Text& path) override;
    void ShowCantMakeChanges(const Text& message) override;
    void Paint() override;
    void Register();
    LRESULT HandOutApplication(WPARAM wParam);
    void TakeOrder(const COPYDATASTRUCT& data);

    HWND m_window;
    HWND m_dialog = nullptr;
    Text m_path;  ///< of the open database
    platform::ComPointer<IDispatch> m_application;
    std::unique_ptr<RunningApplication> m_registration;  ///< null until it is asked for
    AccessProgram m_program;
};

}  // namespace rvl::msaccess
