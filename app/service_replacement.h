#pragma once

#include "platform/text.h"

namespace rvl {

/// The update process's work: puts this executable in the place of the service's and starts the service
/// again. At every moment a whole program stands at the target, the old one or the new one, and whatever goes
/// wrong the service is started again, on the old one when the new one does not come up.
class ServiceReplacement {
 public:
    explicit ServiceReplacement(Text target) : m_target(std::move(target)) {}

    void Run();

    /// Goes on with the work of a process that was killed at it, while no service runs.
    void Resume();

    /// Removes what an update process that was killed left beside the target.
    void RemoveLeftovers() const;

 private:
    bool WaitForTarget() const;  ///< until no process runs it; false after a minute
    bool IsInPlace() const;
    void CopyOver();
    void Finish();
    int Replace() const;  ///< a Win32 code
    bool GoBack() const;  ///< false when the service does not run even so
    Text Beside(TextView suffix) const { return m_target + Text(suffix); }

    Text m_target;
};

}  // namespace rvl
