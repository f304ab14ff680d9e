#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl {

// The module ServiceControl, continued.

/// The account under which the service is installed; it has no password.
inline constexpr const char* kLocalSystem = "LocalSystem";

/// An account of this computer's domain may be named without the domain.
int InstallService(const Text& account, const Text& password, bool automaticStart,
                   const std::vector<Text>& dependencies, bool interactive);

/// As every installation of this system asks for it: LocalSystem, with the start of the system.
int InstallService();

/// Sends the stop control and deletes the service, which goes when it has ended.
int RemoveService();

/// Makes this executable the installed and running service, whichever copy was it before. Nothing is shown;
/// what fails is in the log.
void SilentInstallService();

void SilentRemoveService();

}  // namespace rvl
