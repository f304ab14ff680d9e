#pragma once

#include <cstdint>

#include "platform/desktop_windows.h"
#include "platform/text.h"

namespace rvl {

/// The parameters of CLOSE_FRONTEND.
struct AdministratorMessageOrder {
    std::int32_t frontendId = 0;
    platform::WindowHandle accessWindow = 0;
    Text title;
    std::int32_t seconds = 0;
    bool noContinue = false;
    Text message;  ///< HTML
};

/// The windows that the helper opens.
class HelperWindows {
 public:
    virtual ~HelperWindows() = default;

    /// The helper's own window; hidden but in debug mode.
    virtual void LoadHelperWindow(const Text& caption, bool shown) = 0;

    /// Closes it, which ends the process.
    virtual void UnloadHelperWindow() = 0;

    virtual void OpenAdministratorMessage(const AdministratorMessageOrder& order) = 0;
    virtual bool IsNewVersionNoticeOpen(std::int32_t frontendId) const = 0;
    virtual void OpenNewVersionNotice(std::int32_t frontendId, const Text& frontendName) = 0;
};

}  // namespace rvl
