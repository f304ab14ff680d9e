#pragma once

#include "util/long_vector.h"

namespace rvl {

/// Path of MSACCESS.EXE of an Office major version (2, 7, 8, 9, 10, 11); empty when it is not installed.
Text FindAccessLocation(std::int32_t version);

/// Every known version that is installed, lowest first.
LongVector InstalledAccessVersions();

}  // namespace rvl
