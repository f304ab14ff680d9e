#pragma once

#include "platform/text.h"

namespace rvl {

// What the notice of a front end's new version (frmClientNewVersion) says, by the front end's name.

Text NewVersionCaption(const Text& name);
Text NewVersionMessage(const Text& name);

}  // namespace rvl
