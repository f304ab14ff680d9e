#pragma once

#include "ui/status_window.h"

namespace rvl {

/// frmClientService in debug mode: what the service is doing. The toolkit owns it; SetQueryUnload may refuse
/// its end.
class ServiceWindow : public StatusWindow {
 public:
    explicit ServiceWindow(const Text& caption);

    void SetStatus(const Text& status) { SetLine(m_status, status); }
    void SetDiscoveryMethod(const Text& method) { SetLine(m_discovery, "Server discovery: " + method); }

 private:
    wxStaticText* m_status;  ///< owned by the toolkit, as every control
    wxStaticText* m_discovery;
};

}  // namespace rvl
