#pragma once

#include "tools/deployserver/frontend_options.h"
#include "tools/deployserver/published_folder.h"

namespace rvl::deployserver {

/// A front-end version to publish: its description and its files.
struct FrontendVersion {
    std::int32_t frontendId = 0;
    std::int32_t versionId = 0;
    Text name;
    Text mainFile;        ///< as its file is named in `files`
    Text accessVersions;  ///< numbers between commas; empty: any
    Text mdwPath;
    Text label;
    Text iconFile;
    Text desktopIcon;
    Text menuIcon;
    Text destination;
    Text customFolder;
    Text stagingBase;  ///< empty: the workstation's usual one
    std::vector<PublishedFile> files;

    std::int32_t FileCount() const { return static_cast<std::int32_t>(files.size()); }
};

/// Reads the folder and puts defaults in place of what the options leave out. Raises an Error when the folder
/// cannot be published or the main file or icon file is not in it.
FrontendVersion LoadFrontendVersion(const FrontendOptions& options);

/// Where a workstation with this common application-data folder receives the files; ends with "\".
Text StagingFolder(const FrontendVersion& version, const Text& commonAppData);

/// The parameters of FRONTEND_ADD.
std::vector<Text> AnnouncementOf(const FrontendVersion& version, const Text& stagingFolder);

}  // namespace rvl::deployserver
