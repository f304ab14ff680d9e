#include "tools/msaccess/win32/main_window.h"

#include <oleacc.h>

#include "platform/win32/wide.h"
#include "tools/msaccess/win32/cant_make_changes.h"
#include "tools/msaccess/win32/gdi_painter.h"
#include "util/path_text.h"

namespace rvl::msaccess {
namespace {

using platform::Wide;

constexpr const wchar_t* kClassName = L"OMain";
constexpr UINT kRegisterYourself = WM_USER + 18;

/// Several of them do not hide each other.
int Offset() {
    return 40 + 30 * static_cast<int>(GetCurrentProcessId() / 4 % 5);
}

void RegisterMainClass(WNDPROC onMessage) {
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = onMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.lpszClassName = kClassName;
    RegisterClassExW(&windowClass);
}

}  // namespace

MainWindow::MainWindow(const Text& database) : m_window(CreateMain()), m_program(*this, database) {
    ShowWindow(m_window, SW_SHOW);
    UpdateWindow(m_window);
}

MainWindow::~MainWindow() {
    SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    DestroyWindow(m_window);
}

HWND MainWindow::CreateMain() {
    constexpr int kWidth = 800, kHeight = 520;
    RegisterMainClass(OnMessage);
    HWND window = CreateWindowExW(0, kClassName, L"", WS_OVERLAPPEDWINDOW, Offset(), Offset(), kWidth,
                                  kHeight, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return window;
}

void MainWindow::ShowDatabase(const Text& path) {
    m_path = path;
    SetWindowTextW(m_window, Wide(MainTitle(FileNameOf(path))).c_str());
    m_application = CreateApplication(m_window, path);
    if (m_registration) Register();
}

void MainWindow::ShowCantMakeChanges(const Text& message) {
    if (!IsWindow(m_dialog)) m_dialog = ShowCantMakeChangesDialog(m_window, message);
}

void MainWindow::Paint() {
    InvalidateRect(m_window, nullptr, TRUE);
    UpdateWindow(m_window);
}

void MainWindow::Register() {
    m_registration.reset();
    m_registration = std::make_unique<RunningApplication>(*m_application, m_path);
}

int MainWindow::Run() {
    MSG message;
    while (!m_program.ExitCode()) {
        const bool told = GetMessageW(&message, nullptr, 0, 0) == 0;
        if (told && !m_program.RefusesToEnd()) return static_cast<int>(message.wParam);
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return *m_program.ExitCode();
}

LRESULT CALLBACK MainWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* main = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return main != nullptr ? main->Handle(message, wParam, lParam)
                           : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT MainWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: {
            RECT area{};
            GetClientRect(m_window, &area);
            GdiPainter painter(m_window);
            PaintMainWindow(painter, area.right, area.bottom, FileNameOf(m_path), false);
            return 0;
        }
        case WM_CLOSE:
            m_program.RequestClose();
            return 0;
        case WM_COPYDATA:
            TakeOrder(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
            return TRUE;
        case WM_GETOBJECT:
            if (static_cast<DWORD>(lParam) == static_cast<DWORD>(OBJID_NATIVEOM))
                return HandOutApplication(wParam);
            break;
        case WM_ACTIVATEAPP:
            if (wParam == FALSE) Register();
            break;
        case kRegisterYourself:
            Register();
            return 0;
    }
    return DefWindowProcW(m_window, message, wParam, lParam);
}

LRESULT MainWindow::HandOutApplication(WPARAM wParam) {
    return m_registration ? LresultFromObject(__uuidof(IDispatch), wParam, m_application.get()) : 0;
}

/// Who sent it does not wait for what it leads to.
void MainWindow::TakeOrder(const COPYDATASTRUCT& data) {
    if (data.dwData != kOrderMark) return;
    const Text order(static_cast<const char*>(data.lpData), data.cbData);
    ReplyMessage(TRUE);
    m_program.Perform(ParseOrder(order));
}

}  // namespace rvl::msaccess
