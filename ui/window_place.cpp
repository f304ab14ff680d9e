#include "ui/window_place.h"

#include <wx/display.h>

namespace rvl {
namespace {

PixelRectangle FromRect(const wxRect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

}  // namespace

WindowPlace::WindowPlace(wxTopLevelWindow& window) : m_window(window), m_normal(window.GetRect()) {
    // Later, since a window is told that it is maximized after it has been told its new size.
    const auto rememberLater = [this](wxEvent& event) {
        m_window.CallAfter([this] { Remember(); });
        event.Skip();
    };
    m_window.Bind(wxEVT_SIZE, rememberLater);
    m_window.Bind(wxEVT_MOVE, rememberLater);
}

void WindowPlace::Remember() {
    if (m_window.IsShown() && !m_window.IsMaximized() && !m_window.IsIconized() && !m_window.IsFullScreen())
        m_normal = m_window.GetRect();
}

PixelRectangle WindowPlace::NormalRectangle() const {
    const bool moved = m_window.IsMaximized() || m_window.IsIconized();
    return FromRect(moved ? m_normal : m_window.GetRect());
}

void WindowPlace::SetNormalRectangle(const PixelRectangle& rectangle) {
    m_normal = wxRect(rectangle.left, rectangle.top, rectangle.width, rectangle.height);
    // First there, since a window that comes to a screen of another scaling is scaled with it.
    m_window.Move(m_normal.GetPosition());
    m_window.SetSize(m_normal);
}

std::vector<PixelRectangle> WindowPlace::Screens() const {
    std::vector<PixelRectangle> screens;
    for (unsigned index = 0; index < wxDisplay::GetCount(); ++index) {
        const wxDisplay display(index);
        const auto place = display.IsPrimary() ? screens.begin() : screens.end();
        screens.insert(place, FromRect(display.GetClientArea()));
    }
    return screens;
}

}  // namespace rvl
