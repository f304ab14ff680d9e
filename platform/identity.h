#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl::platform {

/// Who and where this process is, asked in the way of the system family at hand. A query that fails gives the
/// empty text.
Text UserName();              ///< account name without domain
Text AccountFullName();       ///< of the person, from the account database; empty when it is not known
Text FullUserNameSam();       ///< DOMAIN\user as the security library tells it
Text WorkstationUserName();   ///< DOMAIN\user as the network library tells it; user alone without a domain
Text LanGroup();              ///< the workstation's domain or workgroup
Text DomainControllerName();  ///< of the primary domain; empty when there is none
Text ComputerName();

struct SystemVersion {
    std::uint32_t platformId = 0;  ///< 2 is the Windows NT family; Linux counts as one of it
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
    Text servicePack;
};

/// False when the system does not tell.
bool QuerySystemVersion(SystemVersion& version);

}  // namespace rvl::platform
