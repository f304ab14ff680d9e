#pragma once

#include "platform/text.h"

namespace rvl {

/// The window of an administrator's message (frmClientTerminateFrontend).
class AdministratorMessageView {
 public:
    virtual ~AdministratorMessageView() = default;
    virtual void SetCaption(const Text& caption) = 0;
    virtual void SetMessage(const Text& html) = 0;
    virtual void DisableContinueButton() = 0;
    virtual void DisableCloseNowButton() = 0;
    virtual void DisableCloseButton() = 0;  ///< of the title bar; it stays disabled
    virtual void ShowOnTopWithoutFocus() = 0;
    virtual void Unload() = 0;  ///< the window closes, after the caller has returned
};

}  // namespace rvl
