#pragma once

#include <wx/frame.h>

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// frmClientNewVersion: tells of a new version of a front end. The toolkit owns it; closing destroys it.
class NewVersionWindow : public wxFrame {
 public:
    NewVersionWindow(std::int32_t frontendId, const Text& caption, const Text& message);

    std::int32_t FrontendId() const { return m_frontendId; }
    void Discard();     ///< the process ends
    void ShowDialog();  ///< on top, without taking the focus

 private:
    void Arrange(const Text& message);

    std::int32_t m_frontendId;
};

}  // namespace rvl
