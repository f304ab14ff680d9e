#pragma once

#include "platform/text.h"

namespace rvl::platform {

/// The shell's numbers of the special folders.
enum class SpecialFolder {
    StartMenuPrograms = 2,
    CommonDesktop = 25,
    Desktop = 16,
    RoamingAppData = 26,
    LocalAppData = 28,
    CommonAppData = 35,
    Windows = 36,
    System = 37,
    ProgramFiles = 38,
    ProgramFilesX86 = 42,  ///< of 32-bit programs on a 64-bit system
};

/// File-system path of the folder, ending with a separator; empty when the system has none.
Text SpecialFolderPath(SpecialFolder folder);

}  // namespace rvl::platform
