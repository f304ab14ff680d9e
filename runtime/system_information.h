#pragma once

#include "platform/text.h"

namespace rvl {

/// The account running the process as DOMAIN\user; the domain may be missing.
Text FullUsername();
Text DomainName();
Text ComputerName();

/// Name of the primary domain controller, empty when there is none; errors are reported and raised again.
Text PrimaryDomainController();

bool IsWinNT();
Text OSVersionString();

Text Self();     ///< full path of the running executable
Text AppPath();  ///< its folder with a trailing backslash

}  // namespace rvl
