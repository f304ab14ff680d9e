#include "ui/helper_window.h"

namespace rvl {

HelperWindow::HelperWindow(const Text& caption)
    : StatusWindow("frmClientHelper", caption), m_status(AddLine()) {}

}  // namespace rvl
