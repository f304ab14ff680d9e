#pragma once

#include "deploy/server_request.h"

namespace rvl {

/// CREATE_SHORTCUT: a shortcut wherever the server wants one. Success is not answered.
void CreateShortcutCommand(const ServerRequest& request);

}  // namespace rvl
