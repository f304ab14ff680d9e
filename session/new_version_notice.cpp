#include "session/new_version_notice.h"

namespace rvl {

Text NewVersionCaption(const Text& name) {
    return "New version of " + name;
}

Text NewVersionMessage(const Text& name) {
    return "A new version of " + name +
           " has just been released.\r\n\r\nIt is recommend that you close and re-open " + name +
           " to begin using the new version of " + name + ".";
}

}  // namespace rvl
