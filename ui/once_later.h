#pragma once

#include <wx/app.h>
#include <wx/event.h>

#include <functional>

namespace rvl {

/// Does something once after all the changes that ask for it, when no further event waits: a thousand changes
/// that come one by one, but faster than they could be shown, are still one. Belongs to the window whose
/// changes they are.
class OnceLater {
 public:
    OnceLater(wxEvtHandler& owner, std::function<void()> action)
        : m_owner(owner), m_action(std::move(action)) {}

    /// True for the first of several.
    bool Ask() {
        if (m_asked) return false;
        m_asked = true;
        m_owner.Bind(wxEVT_IDLE, &OnceLater::Act, this);
        wxWakeUpIdle();
        return true;
    }

 private:
    void Act(wxIdleEvent& event) {
        event.Skip();
        m_owner.Unbind(wxEVT_IDLE, &OnceLater::Act, this);
        m_asked = false;
        m_action();
    }

    wxEvtHandler& m_owner;
    std::function<void()> m_action;
    bool m_asked = false;
};

}  // namespace rvl
