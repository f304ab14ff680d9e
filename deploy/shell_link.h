#pragma once

#include "platform/shell_link.h"

namespace rvl {

/// One shortcut (".lnk") on its way to or from a file. Every member that fails reports its error under
/// "cShellLink." and its name, and raises it again. Texts end at their first NUL, paths also at what a path
/// buffer of 260 characters holds beside its NUL.
class cShellLink {
 public:
    const Text& Target() const { return m_link.target; }
    void SetTarget(const Text& path);  ///< kept as its full path; 53 when no file is there

    const Text& Arguments() const { return m_link.arguments; }
    void SetArguments(const Text& arguments);

    const Text& WorkingDirectory() const { return m_link.workingDirectory; }
    void SetWorkingDirectory(const Text& folder);

    const Text& Description() const { return m_link.description; }
    void SetDescription(const Text& description);

    /// 1 normal, 3 maximized, 7 minimized and not activated; any other value set is stored as 1.
    int DisplayMode() const { return m_link.showCommand; }
    void SetDisplayMode(int mode);

    const Text& Icon() const { return m_link.iconLocation; }
    void SetIcon(const Text& file, int index);
    void SetIcon(const Text& file) { SetIcon(file, 0); }
    void SetIcon(int index) { SetIcon(m_link.target, index); }  ///< of the current target

    /// Replaces the file as a whole. Raises 53 for an empty path, else the system's error code.
    void Save(const Text& path);
    const Text& SavedPath() const { return m_path; }  ///< where Save was last successful

    /// Becomes the shortcut in the file and has the shell look for its target. Raises the system's error
    /// code.
    void Resolve(const Text& path, std::uint32_t flags, std::intptr_t window, int timeOutMilliseconds);

    /// The system's message for a Win32 error code, its inserts left as they are.
    static Text WinApiError(int code);

    /// The absolute form of a path. Raises the system's error code.
    static Text GetFullPath(const Text& path);

 private:
    platform::ShellLink m_link;
    Text m_path;
};

}  // namespace rvl
