#pragma once

#include <wx/event.h>

#include <functional>

namespace rvl {

/// Does something once after all the changes that ask for it in one turn of the event loop. Belongs to the
/// window whose changes they are.
class OnceLater {
 public:
    OnceLater(wxEvtHandler& owner, std::function<void()> action)
        : m_owner(owner), m_action(std::move(action)) {}

    /// True for the first of several.
    bool Ask() {
        if (m_asked) return false;
        m_asked = true;
        m_owner.CallAfter([this] {
            m_asked = false;
            m_action();
        });
        return true;
    }

 private:
    wxEvtHandler& m_owner;
    std::function<void()> m_action;
    bool m_asked = false;
};

}  // namespace rvl
