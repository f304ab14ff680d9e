#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl::deployserver {

/// The client executable that every workstation is to run.
struct UpdateOptions {
    Text localFile;                       ///< empty: no update
    Text remotePath;                      ///< empty: below the workstation's common application data
    Text version;                         ///< of the executable; empty: whatever it turns out to be
    std::uint32_t timeoutSeconds = 180U;  ///< from the order to the login with the new version

    bool IsUpdating() const { return !localFile.empty(); }
};

}  // namespace rvl::deployserver
