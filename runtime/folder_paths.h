#pragma once

#include "platform/text.h"

namespace rvl {

// The shared folders, ending with a backslash (ProgramFilesPath only when the folder exists); the first
// source that yields a folder wins.
Text AllUsersPath();
Text CommonAppDataPath();
Text UserLocalSettingsAppDataPath();
Text ProgramFilesPath();
Text ProgramFilesX86Path();  ///< of 32-bit programs, empty when the system has none of its own for them

// The user's own, empty when the system has none.
Text DesktopPath();
Text StartMenuProgramsPath();

}  // namespace rvl
