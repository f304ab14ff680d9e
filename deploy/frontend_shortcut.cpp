#include "deploy/frontend_shortcut.h"

#include "runtime/folders.h"
#include "runtime/system_information.h"

namespace rvl {
namespace {

constexpr int kOwnFrontendIcon = 4;  ///< of the executable's icons

/// The name within one quoted word of a command line, where a double quote would end it.
Text QuotedWord(const Text& name) {
    Text word = "\"";
    for (const char character : name)
        character == '"' ? word += "''" : word += character;
    return word + "\"";
}

bool IsUsableIcon(const Text& path) {
    return !path.empty() && FileExists(path) && FileLen(path) > 0;
}

}  // namespace

FrontendShortcut::FrontendShortcut(const Text& frontendId, const Text& frontendName, const Text& iconPath) {
    m_link.SetTarget(Self());
    m_link.SetArguments("-start_frontend " + frontendId + " " + QuotedWord(frontendName));
    if (IsUsableIcon(iconPath))
        m_link.SetIcon(iconPath, 0);
    else
        m_link.SetIcon(Self(), kOwnFrontendIcon);
}

}  // namespace rvl
