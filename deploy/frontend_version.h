#pragma once

#include <cstdint>

#include "util/long_vector.h"

namespace rvl {

/// A version of a front end as the server announces it.
struct FrontendVersion {
    std::int32_t FrontendID = 0;
    std::int32_t FrontendVersionID = 0;
    Text FrontendName;
    Text FrontendLocation;  ///< staging folder into which the server puts the files
    Text FrontendFilename;  ///< the main file; this and the icon stand below FrontendLocation
    LongVector AllowedAccessVersions;
    Text MDWPath;
    Text FriendlyVersionNumber;
    Text IconFile;
    Text DesktopIconPath;  ///< names of the shortcuts, without ".lnk"
    Text MenuIconPath;
    std::int32_t DestinationLocation = 0;
    Text CustomDestinationLocation;
    std::int32_t FileCount = 0;
};

}  // namespace rvl
