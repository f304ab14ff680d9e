#include "tools/msaccess/main_window.h"

#include <unistd.h>

#include <utility>

#include "tools/msaccess/painter.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl::msaccess {
namespace {

constexpr unsigned short kWidth = 800, kHeight = 520;
constexpr const char* kCommand = "MSACCESS_COMMAND";
constexpr const char* kCurrentProject = "ACCESS_CURRENT_PROJECT";
constexpr TextView kCantMakeChanges =
    "You can't make changes to the objects of this database while another user has it open.";

/// Several of them do not hide each other.
short Offset() {
    return static_cast<short>(40 + 30 * (getpid() % 5));
}

[[noreturn]] void Hang() {
    for (;;)
        pause();
}

}  // namespace

Text MainTitle(const Text& database) {
    return database.empty() ? "Microsoft Access" : "Microsoft Access - [" + database + "]";
}

MainWindow::MainWindow(const Desktop& desktop, const Text& database)
    : m_desktop(desktop),
      m_window(desktop.CreateTopLevel({Offset(), Offset(), kWidth, kHeight}, "OMain", "")) {
    m_desktop.SetText(m_window, "ACCESS_VERSION", "11.0");
    m_desktop.SetText(m_window, "ACCESS_BUILD", "8166");
    Open(database);
    XMapRaised(m_desktop.Get(), m_window);
    Paint();
}

void MainWindow::Open(const Text& database) {
    m_database = FileNameOf(database);
    m_desktop.SetTitle(m_window, MainTitle(m_database));
    if (database.empty())
        XDeleteProperty(m_desktop.Get(), m_window, m_desktop.Name(kCurrentProject));
    else
        m_desktop.SetText(m_window, kCurrentProject, database);
}

void MainWindow::Perform(const Order& order) {
    const auto& [what, argument] = order;
    if (what == "open" || what == "close database") Open(argument);
    if (what == "cant-make-changes") ShowCantMakeChanges();
    if (what == "ignore close" || what == "stubborn") m_ignoresClose = true;
    if (what == "exit") m_exitCode = ParseLongOr(argument, 0);
    Paint();
    if (what == "hang") Hang();
}

void MainWindow::ShowCantMakeChanges() {
    if (m_dialog != None) return;
    m_dialog = m_desktop.CreateTopLevel({180, 220, 580, 110}, "#32770", "Microsoft Access");
    XSetTransientForHint(m_desktop.Get(), m_dialog, m_window);
    m_dialogText = m_desktop.Create(m_dialog, {20, 30, 540, 24}, "MSOUNISTAT", Text(kCantMakeChanges));
    XMapSubwindows(m_desktop.Get(), m_dialog);
    XMapRaised(m_desktop.Get(), m_dialog);
}

int MainWindow::Run() {
    while (!m_exitCode) {
        XEvent event{};
        XNextEvent(m_desktop.Get(), &event);
        HandleEvent(event);
    }
    return *m_exitCode;
}

void MainWindow::HandleEvent(const XEvent& event) {
    if (event.type == Expose && event.xexpose.count == 0) Paint();
    if (event.type == ClientMessage) CloseRequested(event.xclient.window);
    if (event.type == PropertyNotify && event.xproperty.state == PropertyNewValue &&
        event.xproperty.atom == m_desktop.Name(kCommand))
        Perform(ParseOrder(m_desktop.TakeText(m_window, kCommand)));
}

/// Nothing else is sent to these windows.
void MainWindow::CloseRequested(Window window) {
    if (window == m_dialog)
        XDestroyWindow(m_desktop.Get(), std::exchange(m_dialog, None));
    else if (!m_ignoresClose)
        m_exitCode = 0;
}

void MainWindow::Paint() const {
    Painter painter(m_desktop.Get(), m_window);
    PaintMainWindow(painter, kWidth, kHeight, m_database, !m_desktop.HasWindowManager());
    if (m_dialog != None) Painter(m_desktop.Get(), m_dialogText).Write(4, 16, kCantMakeChanges);
    XSync(m_desktop.Get(), False);
}

}  // namespace rvl::msaccess
