#include "ui/service_window.h"

namespace rvl {

ServiceWindow::ServiceWindow(const Text& caption)
    : StatusWindow("frmClientService", caption), m_status(AddLine()), m_discovery(AddLine()) {}

}  // namespace rvl
