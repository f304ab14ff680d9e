#pragma once

#include <sys/types.h>

#include "platform/text.h"

namespace rvl::platform {

/// A child process with a session of its own, without terminal and streams, in the root folder. It knows this
/// workstation root, whatever folder the root was named from.
class DetachedProcess {
 public:
    /// The first word of the command line is the program. Returns a Win32 code.
    int Start(const Text& commandLine);

    bool HasEnded();

    /// Ends it, whether it listens or not.
    void End();

 private:
    pid_t m_process = 0;  ///< 0: none, or its end has been seen
};

}  // namespace rvl::platform
