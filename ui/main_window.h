#pragma once

#include <wx/frame.h>

#include <functional>

#include "runtime/unload_mode.h"

namespace rvl {

/// A window whose end is the end of its process. Until then it stays in memory, hidden: who shows things in
/// it need not know that it is gone.
class MainWindow : public wxFrame {
 public:
    /// Asked before the window unloads; false keeps it.
    using QueryUnload = std::function<bool(UnloadMode)>;

    MainWindow(const char* formName, const wxString& caption, long style = wxDEFAULT_FRAME_STYLE);
    ~MainWindow() override;

    void SetQueryUnload(QueryUnload query) { m_query = std::move(query); }

    /// Once only, whoever asks.
    void UnloadFor(UnloadMode mode);

 protected:
    virtual void KeepPlace() const {}  ///< the window is about to go

 private:
    void OnSessionEnd(wxCloseEvent&) { UnloadFor(UnloadMode::SessionEnding); }

    QueryUnload m_query;
    bool m_loaded = true;
};

}  // namespace rvl
