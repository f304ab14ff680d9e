#pragma once

#include "platform/text.h"

namespace rvl {

// The shared folders, each ending with a backslash; the first source that yields a folder wins.
Text AllUsersPath();
Text CommonAppDataPath();
Text UserLocalSettingsAppDataPath();
Text ProgramFilesPath();

}  // namespace rvl
