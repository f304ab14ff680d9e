#pragma once

#include <sys/types.h>

#include <optional>

#include "platform/text.h"

namespace rvl::platform {

/// An account of this host, as access lists know them.
struct HostAccount {
    enum class Kind { User, Group, Everyone };

    Kind kind = Kind::Everyone;
    id_t id = 0;  ///< of the user or group
};

/// The account of the part after the last "\": Administrators is the group sudo (root where there is none),
/// Everyone and SYSTEM (root) are known by name, others are a user or else a group, without regard to case.
/// Not for several threads at once.
std::optional<HostAccount> FindHostAccount(TextView name);

}  // namespace rvl::platform
