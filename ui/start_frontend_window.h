#pragma once

#include <wx/gauge.h>
#include <wx/timer.h>

#include "session/start_frontend_view.h"
#include "ui/main_window.h"

class wxStaticText;

namespace rvl {

/// frmClientStartFrontend: says that a front end is loading. The toolkit owns it; SetQueryUnload tells of its
/// end, with UnloadMode::Closing when the user closes it.
class StartFrontendWindow : public MainWindow, public StartFrontendView {
 public:
    StartFrontendWindow();

    void SetCaption(const Text& caption) override;
    void SetMessage(const Text& message) override;
    void Show() override;
    bool Show(bool shown) override { return MainWindow::Show(shown); }
    void Unload() override { UnloadFor(UnloadMode::ByCode); }

 private:
    wxStaticText* m_message;  ///< lblMessage; owned by the toolkit, as every control
    wxGauge* m_gauge;
    wxTimer m_pulse;
};

}  // namespace rvl
