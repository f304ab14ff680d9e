#pragma once

#include "platform/text.h"

namespace rvl {

/// The window that says that a front end is loading (frmClientStartFrontend).
class StartFrontendView {
 public:
    virtual ~StartFrontendView() = default;
    virtual void SetCaption(const Text& caption) = 0;
    virtual void SetMessage(const Text& message) = 0;
    virtual void Show() = 0;
    virtual void Unload() = 0;  ///< closes it, which ends the process
};

}  // namespace rvl
