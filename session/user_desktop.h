#pragma once

#include "session/desktop.h"

namespace rvl {

/// The real desktop on which this process runs.
class UserDesktop : public Desktop {
 public:
    std::vector<WindowHandle> TopLevelWindows() const override;
    std::vector<WindowHandle> ChildWindows(WindowHandle window) const override;
    bool IsWindow(WindowHandle window) const override;
    bool HasClass(WindowHandle window, TextView windowClass) const override;
    Text WindowText(WindowHandle window) const override;
    std::uint32_t Property(WindowHandle window, const char* name) const override;
    void SetProperty(WindowHandle window, const char* name, std::uint32_t value) override;
    WindowHandle Foreground() const override;
    bool BringToForeground(WindowHandle window) override;
    void RequestClose(WindowHandle window) override;
    void PostQuit(WindowHandle window) override;
    void TerminateProcessOf(WindowHandle window) override;
    std::optional<RunningAccess> AccessObject(WindowHandle accessWindow) const override;
    void AskToRegister(WindowHandle accessWindow) override;
    void PretendActivation(WindowHandle accessWindow) override;
    std::unique_ptr<AccessProcess> Start(const Text& commandLine) override;
};

}  // namespace rvl
