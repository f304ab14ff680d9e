#include "ui/splitter.h"

#include <wx/dc.h>
#include <wx/settings.h>

#include <algorithm>

#include "ui/page_size.h"

namespace rvl {

Splitter::Splitter(wxWindow* parent)
    : wxSplitterWindow(parent, wxID_ANY, wxDefaultPosition, parent->FromDIP(kFirstPageSize),
                       wxSP_LIVE_UPDATE | wxSP_3DSASH | wxWANTS_CHARS) {
    SetMinimumPaneSize(FromDIP(80));
    Bind(wxEVT_CHAR_HOOK, &Splitter::OnKey, this);
    // Sent only while the user moves it, not when it gives way to a small window.
    Bind(wxEVT_SPLITTER_SASH_POS_CHANGING, [this](wxSplitterEvent& event) {
        m_wanted = event.GetSashPosition();
        event.Skip();
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        CallAfter([this] { SetSashPosition(m_wanted); });
    });
}

void Splitter::SetPosition(std::int32_t position) {
    m_wanted = std::max(position, GetMinimumPaneSize());
    SetSashPosition(m_wanted);
}

void Splitter::OnKey(wxKeyEvent& event) {
    const bool plain = event.GetModifiers() == wxMOD_NONE;
    if (plain && event.GetKeyCode() == WXK_F8) return Hold(!m_held);
    if (m_held && plain && MoveWith(event.GetKeyCode())) return;
    const bool consumed = m_held && (event.GetKeyCode() == WXK_ESCAPE || event.GetKeyCode() == WXK_RETURN);
    Hold(false);
    event.Skip(!consumed);
}

bool Splitter::MoveWith(int key) {
    const int step = GetCharWidth() * 2, length = GetClientSize().GetWidth();
    const int most = length - GetMinimumPaneSize() - GetSashSize();
    int position = GetSashPosition();
    switch (key) {
        case WXK_LEFT:
        case WXK_UP:
            position -= step;
            break;
        case WXK_RIGHT:
        case WXK_DOWN:
            position += step;
            break;
        case WXK_HOME:
            position = 0;
            break;
        case WXK_END:
            position = most;
            break;
        default:
            return false;
    }
    SetPosition(std::min(position, most));
    return true;
}

void Splitter::Hold(bool held) {
    if (m_held == held) return;
    m_held = held;
    Refresh();
}

void Splitter::DrawSash(wxDC& dc) {
    wxSplitterWindow::DrawSash(dc);
    if (!m_held) return;
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT)));
    dc.DrawRectangle(GetSashPosition(), 0, GetSashSize(), GetClientSize().GetHeight());
}

}  // namespace rvl
