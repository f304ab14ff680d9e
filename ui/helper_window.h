#pragma once

#include "ui/status_window.h"

namespace rvl {

/// frmClientHelper: the helper's own window, which only those see who debug it. The toolkit owns it.
class HelperWindow : public StatusWindow {
 public:
    explicit HelperWindow(const Text& caption);

    void SetStatus(const Text& status) { SetLine(m_status, status); }

 private:
    wxStaticText* m_status;  ///< owned by the toolkit, as every control
};

}  // namespace rvl
