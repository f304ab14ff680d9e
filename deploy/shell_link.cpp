#include "deploy/shell_link.h"

#include "platform/full_path.h"
#include "platform/system_message.h"
#include "runtime/folders.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

/// What a path buffer holds of a path.
Text PathText(const Text& path) {
    return StripTerminator(TextView(path).substr(0, platform::kPathBuffer - 1));
}

void Check(int code, TextView source) {
    if (code != 0) throw Error(code, Text(source), cShellLink::WinApiError(code));
}

Text AbsolutePath(const Text& path, TextView source) {
    Text absolute;
    Check(platform::FullPath(StripTerminator(path), absolute), source);
    return absolute;
}

int KnownMode(int mode) {
    return mode == 3 || mode == 7 ? mode : 1;
}

}  // namespace

void cShellLink::SetTarget(const Text& path) try {
    const Text file = StripTerminator(path);
    if (!FileExists(file)) RaiseFileNotFound("cShellLink.Target");
    m_link.target = AbsolutePath(file, "cShellLink.Target");
} catch (...) {
    HandleErrorAndReRaise("cShellLink.Target");
}

void cShellLink::SetArguments(const Text& arguments) {
    m_link.arguments = StripTerminator(arguments);
}

void cShellLink::SetWorkingDirectory(const Text& folder) {
    m_link.workingDirectory = PathText(folder);
}

void cShellLink::SetDescription(const Text& description) {
    m_link.description = StripTerminator(description);
}

void cShellLink::SetDisplayMode(int mode) {
    m_link.showCommand = KnownMode(mode);
}

void cShellLink::SetIcon(const Text& file, int index) {
    m_link.iconLocation = PathText(file);
    m_link.iconIndex = index;
}

void cShellLink::Save(const Text& path) try {
    const Text file = StripTerminator(path);
    if (file.empty()) RaiseFileNotFound("cShellLink.Save");
    Check(platform::WriteShellLink(file, m_link), "cShellLink.Save");
    m_path = file;
} catch (...) {
    HandleErrorAndReRaise("cShellLink.Save");
}

void cShellLink::Resolve(const Text& path, std::uint32_t flags, std::intptr_t window,
                         int timeOutMilliseconds) try {
    const Text file = StripTerminator(path);
    const int code = platform::ResolveShellLink(file, flags, window, timeOutMilliseconds, m_link);
    for (Text* text : {&m_link.target, &m_link.workingDirectory, &m_link.iconLocation})
        *text = PathText(*text);
    Check(code, "cShellLink.Resolve");
} catch (...) {
    HandleErrorAndReRaise("cShellLink.Resolve");
}

Text cShellLink::WinApiError(int code) {
    return StripTerminator(platform::SystemMessage(code));
}

Text cShellLink::GetFullPath(const Text& path) try {
    return AbsolutePath(path, "cShellLink.GetFullPath");
} catch (...) {
    HandleErrorAndReRaise("cShellLink.GetFullPath");
}

}  // namespace rvl
