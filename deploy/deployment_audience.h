#pragma once

#include <cstdint>

namespace rvl {

/// The people at this workstation, as far as a change of what is deployed concerns them.
class DeploymentAudience {
 public:
    virtual ~DeploymentAudience() = default;

    /// Every switchboard gets its list anew, and the helpers whose users have the version announce it.
    virtual void VersionDeployed(std::int32_t frontendVersionId) = 0;

    /// Every switchboard that shows the front end drops its entry.
    virtual void VersionRemoved(std::int32_t frontendId) = 0;
};

}  // namespace rvl
