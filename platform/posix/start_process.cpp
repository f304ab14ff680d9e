#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/posix/program_arguments.h"
#include "platform/posix/spawn_child.h"
#include "platform/process.h"

namespace rvl::platform {
namespace {

int CodeOf(const GError& error) {
    constexpr int kFileNotFound = 2, kAccessDenied = 5, kBadFormat = 193, kGeneralFailure = 31;
    switch (error.code) {
        case G_SPAWN_ERROR_NOENT:
            return kFileNotFound;
        case G_SPAWN_ERROR_ACCES:
        case G_SPAWN_ERROR_PERM:
            return kAccessDenied;
        case G_SPAWN_ERROR_NOEXEC:
            return kBadFormat;
        default:
            return kGeneralFailure;
    }
}

/// Windows starts any program without a mark that it is one; a file that was received has none.
void MarkAsProgram(const std::string& host) {
    struct stat status {};
    if (access(host.c_str(), X_OK) == 0 || stat(host.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    chmod(host.c_str(), (status.st_mode & 07777) | S_IXUSR);  // refused for a file of somebody else's
}

/// A session of its own: the end of the terminal or of the starting process is none of its concern.
void BeginSession(gpointer) {
    setsid();
}

}  // namespace

int SpawnChild(const Text& commandLine, ChildEnd end, pid_t& process) {
    constexpr int kFileNotFound = 2;
    std::vector<std::string> arguments = ProgramArguments(commandLine);
    if (arguments.empty()) return kFileNotFound;
    MarkAsProgram(arguments.front());
    std::vector<char*> pointers(arguments.size() + 1);  // the last one stays null
    std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                   [](std::string& argument) { return argument.data(); });
    const int flags = G_SPAWN_STDOUT_TO_DEV_NULL | G_SPAWN_STDERR_TO_DEV_NULL |
                      (end == ChildEnd::Watched ? G_SPAWN_DO_NOT_REAP_CHILD : 0);
    GError* error = nullptr;
    if (g_spawn_async(nullptr, pointers.data(), nullptr, static_cast<GSpawnFlags>(flags), BeginSession,
                      nullptr, &process, &error) != 0)
        return 0;
    const int code = CodeOf(*error);
    g_error_free(error);
    return code;
}

int StartProcess(const Text& commandLine, std::uint32_t& processId) {
    pid_t process = 0;
    const int error = SpawnChild(commandLine, ChildEnd::Unwatched, process);
    if (error == 0) processId = static_cast<std::uint32_t>(process);
    return error;
}

}  // namespace rvl::platform
