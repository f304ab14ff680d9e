#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/desktop_windows.h"
#include "platform/running_access.h"
#include "platform/text.h"

namespace rvl {

using platform::RunningAccess;
using platform::WindowHandle;

inline constexpr const char* kAccessWindowClass = "OMain";

/// An Access that the helper has started and whose window it waits for.
class AccessProcess {
 public:
    virtual ~AccessProcess() = default;
    virtual std::optional<std::uint32_t> ExitCode() const = 0;  ///< 259 while it runs; none: not to be read
    virtual WindowHandle MainWindow() const = 0;                ///< 0 until it shows one
};

/// The user's desktop as the helper sees it: what the logic needs of platform/, so that it can be tested
/// without a display.
class Desktop {
 public:
    virtual ~Desktop() = default;

    // The windows of all processes; a window may vanish at any moment (platform/desktop_windows.h).
    virtual std::vector<WindowHandle> TopLevelWindows() const = 0;
    virtual std::vector<WindowHandle> ChildWindows(WindowHandle window) const = 0;
    virtual bool IsWindow(WindowHandle window) const = 0;
    virtual bool HasClass(WindowHandle window, TextView windowClass) const = 0;
    virtual Text WindowText(WindowHandle window) const = 0;
    virtual std::uint32_t Property(WindowHandle window, const char* name) const = 0;
    virtual void SetProperty(WindowHandle window, const char* name, std::uint32_t value) = 0;
    virtual WindowHandle Foreground() const = 0;
    virtual bool BringToForeground(WindowHandle window) = 0;
    virtual void RequestClose(WindowHandle window) = 0;
    virtual void PostQuit(WindowHandle window) = 0;
    virtual void TerminateProcessOf(WindowHandle window) = 0;

    // Microsoft Access
    virtual std::optional<RunningAccess> AccessObject(WindowHandle accessWindow) const = 0;
    virtual void AskToRegister(WindowHandle accessWindow) = 0;
    virtual void PretendActivation(WindowHandle accessWindow) = 0;

    /// Starts a command line; null, with log lines, when the system refuses.
    virtual std::unique_ptr<AccessProcess> Start(const Text& commandLine) = 0;
};

}  // namespace rvl
