#include "ui/main_window.h"

#include <wx/app.h>

#include "ui/forms.h"
#include "ui/toolkit.h"

namespace rvl {

MainWindow::MainWindow(const char* formName, const wxString& caption, long style)
    : wxFrame(nullptr, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize, style | wxTAB_TRAVERSAL,
              formName) {
    Furnish(*this);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
        if (event.CanVeto()) event.Veto();  // the window stays in memory
        UnloadFor(UnloadMode::Closing);
    });
    wxTheApp->Bind(wxEVT_QUERY_END_SESSION, [](wxCloseEvent&) {});  // nothing is in its way
    wxTheApp->Bind(wxEVT_END_SESSION, &MainWindow::OnSessionEnd, this);
}

MainWindow::~MainWindow() {
    wxTheApp->Unbind(wxEVT_END_SESSION, &MainWindow::OnSessionEnd, this);
}

void MainWindow::UnloadFor(UnloadMode mode) {
    if (!m_loaded) return;
    m_loaded = false;  // also while it is asked: the answer may come with an order to unload
    m_loaded = m_query && !m_query(mode);
    if (m_loaded) return;
    KeepPlace();
    Hide();
    QuitWindows();
}

}  // namespace rvl
