#pragma once

#include "deploy/shell_link.h"

namespace rvl {

/// The shortcut that starts a front end: this executable with "-start_frontend", the id and the name.
class FrontendShortcut {
 public:
    /// The executable's own icon stands in for an icon file that is missing or empty.
    FrontendShortcut(const Text& frontendId, const Text& frontendName, const Text& iconPath);

    void Save(const Text& path) { m_link.Save(path); }  ///< as often as needed; failures are raised

 private:
    cShellLink m_link;
};

}  // namespace rvl
