#pragma once

#include "deploy/server_request.h"

namespace rvl {

// The server's commands on access rights; each checks its parameters and answers. An account
// "RVL-INTERNAL\..." (the prefix in this case) is a well-known one: Administrators, Everyone or System in any
// case.
void RemoveAllAccessCommand(const ServerRequest& request);  ///< ACL_REMOVE_ALL
void AddAccessCommand(const ServerRequest& request);        ///< ACL_ADD
void SetOwnerCommand(const ServerRequest& request);         ///< ACL_OWNER

}  // namespace rvl
