#include "deploy/shortcut_command.h"

#include "deploy/shell_link.h"

namespace rvl {

void CreateShortcutCommand(const ServerRequest& request) {
    const auto& params = request.Parameters();
    const Text &path = params[0], &target = params[1], &arguments = params[2], &icon = params[3];
    if (path.empty() || target.empty()) return request.RefuseAsInvalid();
    cShellLink shortcut;
    shortcut.SetTarget(target);
    if (!arguments.empty()) shortcut.SetArguments(arguments);
    if (!icon.empty()) shortcut.SetIcon(icon, 0);
    shortcut.Save(path);
}

}  // namespace rvl
