#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "platform/desktop_windows.h"
#include "platform/text.h"

namespace rvl::platform {

/// A process that this one has started and watches. It lives on when this object goes.
class StartedProcess {
 public:
    static constexpr std::uint32_t kStillActive = 259;

    /// Starts a command line whose first word is the program. Null when the system refuses; `error` is then
    /// its Win32 code.
    static std::unique_ptr<StartedProcess> Start(const Text& commandLine, int& error);

    ~StartedProcess();
    StartedProcess(const StartedProcess&) = delete;
    StartedProcess& operator=(const StartedProcess&) = delete;

    std::uint32_t ProcessId() const;

    /// kStillActive while it runs; none when the system does not tell.
    std::optional<std::uint32_t> ExitCode() const;

    /// The first top-level window of this class that its primary thread has; 0 when there is none yet.
    WindowHandle FindWindowOfClass(TextView windowClass) const;

 private:
    struct Impl;
    explicit StartedProcess(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> m_impl;
};

}  // namespace rvl::platform
