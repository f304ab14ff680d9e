#pragma once

#include <string>

namespace rvl::platform {

/// The folder that holds this workstation's drives, registry and locks: RVL_ROOT, else
/// /var/lib/rvlclient for root and $XDG_DATA_HOME/rvlclient for others. UTF-8, no trailing slash.
/// Created on first use; a folder that cannot be created shows as failures of what is done in it.
const std::string& WorkstationRoot();

/// The default one of this user, whatever RVL_ROOT says.
const std::string& UsersOwnRoot();

}  // namespace rvl::platform
