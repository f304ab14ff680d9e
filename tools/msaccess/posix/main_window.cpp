#include "tools/msaccess/posix/main_window.h"

#include <unistd.h>

#include <utility>

#include "tools/msaccess/posix/x_painter.h"
#include "util/path_text.h"

namespace rvl::msaccess {
namespace {

constexpr unsigned short kWidth = 800, kHeight = 520;
constexpr const char* kCurrentProject = "ACCESS_CURRENT_PROJECT";

/// Several of them do not hide each other.
short Offset() {
    return static_cast<short>(40 + 30 * (getpid() % 5));
}

}  // namespace

MainWindow::MainWindow(const Desktop& desktop, const Text& database)
    : m_desktop(desktop), m_window(CreateWindow()), m_program(*this, database) {
    XMapRaised(m_desktop.Get(), m_window);
    Paint();
}

Window MainWindow::CreateWindow() const {
    const Window window = m_desktop.CreateTopLevel({Offset(), Offset(), kWidth, kHeight}, "OMain", "");
    m_desktop.SetText(window, "ACCESS_VERSION", "11.0");
    m_desktop.SetText(window, "ACCESS_BUILD", "8166");
    return window;
}

void MainWindow::ShowDatabase(const Text& path) {
    m_database = FileNameOf(path);
    m_desktop.SetTitle(m_window, MainTitle(m_database));
    if (path.empty())
        XDeleteProperty(m_desktop.Get(), m_window, m_desktop.Name(kCurrentProject));
    else
        m_desktop.SetText(m_window, kCurrentProject, path);
}

void MainWindow::ShowCantMakeChanges(const Text& message) {
    if (m_dialog != None) return;
    m_message = message;
    m_dialog = m_desktop.CreateTopLevel({180, 220, 580, 110}, "#32770", "Microsoft Access");
    XSetTransientForHint(m_desktop.Get(), m_dialog, m_window);
    m_dialogText = m_desktop.Create(m_dialog, {20, 30, 540, 24}, "MSOUNISTAT", message);
    XMapSubwindows(m_desktop.Get(), m_dialog);
    XMapRaised(m_desktop.Get(), m_dialog);
}

int MainWindow::Run() {
    while (!m_program.ExitCode()) {
        XEvent event{};
        XNextEvent(m_desktop.Get(), &event);
        HandleEvent(event);
    }
    return *m_program.ExitCode();
}

void MainWindow::HandleEvent(const XEvent& event) {
    if (event.type == Expose && event.xexpose.count == 0) Paint();
    if (event.type == ClientMessage) CloseRequested(event.xclient.window);
    if (event.type == PropertyNotify && event.xproperty.state == PropertyNewValue &&
        event.xproperty.atom == m_desktop.Name(kOrderProperty))
        m_program.Perform(ParseOrder(m_desktop.TakeText(m_window, kOrderProperty)));
}

/// Nothing else is sent to these windows.
void MainWindow::CloseRequested(Window window) {
    if (window == m_dialog)
        XDestroyWindow(m_desktop.Get(), std::exchange(m_dialog, None));
    else
        m_program.RequestClose();
}

void MainWindow::Paint() {
    XPainter painter(m_desktop.Get(), m_window);
    PaintMainWindow(painter, kWidth, kHeight, m_database, !m_desktop.HasWindowManager());
    if (m_dialog != None) XPainter(m_desktop.Get(), m_dialogText).Write(4, 16, m_message);
    XSync(m_desktop.Get(), False);
}

}  // namespace rvl::msaccess
