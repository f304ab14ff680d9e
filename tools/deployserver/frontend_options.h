#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tools/deployserver/user_order.h"

namespace rvl::deployserver {

/// A front-end version as the command line describes it; what it leaves out is none or empty.
struct VersionOptions {
    Text folder;  ///< that holds its files
    std::int32_t frontendId = 1;
    Text name;
    Text mainFile;
    std::optional<Text> label;
    Text accessVersions;
    Text mdwPath;
    Text iconFile;
    std::optional<Text> desktopIcon;  ///< empty: no shortcut
    std::optional<Text> menuIcon;     ///< empty: no shortcut
    Text destination = "USER_PROFILE";
    Text customFolder;
    Text staging;  ///< folder on the workstation; empty: below its common application data
};

/// What is to become of front ends on every workstation that logs in.
struct FrontendOptions {
    VersionOptions version;
    std::optional<std::int32_t> versionId;
    std::vector<UserOrder> orders;  ///< as they were given
    bool report = false;
    bool verify = false;

    bool IsPublishing() const { return !version.folder.empty(); }
    bool NeedsReport() const { return report || IsPublishing() || !orders.empty(); }
};

}  // namespace rvl::deployserver
