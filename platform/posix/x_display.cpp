#include "platform/posix/x_display.h"

#include "platform/process.h"

namespace rvl::platform {
namespace {

/// Not shared with the window toolkit, whose events and errors are its own. It stays open until the process
/// ends: to close it is to speak with a server that may be gone.
Display* OwnConnection() {
    static Display* connection = nullptr;
    if (connection == nullptr && HasDisplay()) connection = XOpenDisplay(nullptr);
    return connection;
}

XErrorHandler g_outerHandler = nullptr;

int DropOwnError(Display* display, XErrorEvent* error) {
    return display == OwnConnection() || g_outerHandler == nullptr ? 0 : g_outerHandler(display, error);
}

}  // namespace

DisplayUse::DisplayUse() : m_display(OwnConnection()) {
    if (m_display != nullptr) g_outerHandler = XSetErrorHandler(DropOwnError);
}

DisplayUse::~DisplayUse() {
    if (m_display == nullptr) return;
    // The errors of what was sent arrive, and events nobody asked for go; most uses end with an answer to
    // their last request, and the poll of the desktop has many.
    const bool answered = LastKnownRequestProcessed(m_display) + 1 == NextRequest(m_display);
    if (!answered || QLength(m_display) > 0) XSync(m_display, True);
    XSetErrorHandler(g_outerHandler);
}

}  // namespace rvl::platform
