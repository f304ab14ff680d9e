#include "app/upgrade_cleanup.h"

#include "app/service_replacement.h"
#include "app/update_state.h"
#include "platform/files.h"
#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

void ForgetTempBinary(const Text& path) {
    if (path == GetTempBinaryPath()) SetTempBinaryPath("");
}

Text WithoutTrailingLineEnds(Text content) {
    while (content.ends_with("\r\n"))
        content.resize(content.size() - 2);
    return content;
}

void ImportLog(const Text& executable) {
    const Text path = LogPathOf(executable);
    if (EqualsNoCase(path, LogPath()) || !FileExists(path)) return;
    Log("Importing log entries from " + path + "\r\n" + WithoutTrailingLineEnds(ReadFromFile(path)));
    Log("Import from " + path + " complete");
    platform::DeleteFileAt(path);
}

}  // namespace

void UpgradeCleanup() try {
    const Text path = State().UpgradeTempPath;
    if (path.empty()) return;
    if (!FileExists(path)) {
        Log("Temporary upgrade does not exist: " + path);
        ForgetTempBinary(path);
        State().UpgradeTempPath.clear();
        return;
    }
    platform::DeleteFileAt(path);
    if (FileExists(path)) return;
    Log("Temporary upgrade file deleted: " + path);
    ServiceReplacement(Self()).RemoveLeftovers();  // nobody runs the update any more
    ForgetTempBinary(path);
    ImportLog(path);
    State().UpgradeTempPath.clear();
} catch (...) {
    HandleError("Globals.UpgradeCleanup");
}

}  // namespace rvl
