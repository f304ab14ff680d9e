#pragma once

#include "platform/text.h"

namespace rvl {

/// Gives a file or folder the access rights of a deployed item: full access for the service's account, the
/// Administrators, Local System and the user, nothing for others, owned by the Administrators. What fails is
/// left as it is: the deployment goes on.
void SetUserFilePerms(const Text& username, const Text& path);

}  // namespace rvl
