#include "net/file_download.h"

#include "runtime/folders.h"
#include "runtime/log_file.h"
#include "util/handle_error.h"
#include "util/parameters.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr std::size_t kBeginParameters = 3;

std::int64_t ParseSize(TextView text) {
    const auto size = ParseInteger64(text);
    if (!size) RaiseTypeMismatch("FileDownload.IncomingMessage");
    if (*size < 0) RaiseOverflow("FileDownload.IncomingMessage");
    return *size;
}

void CreateFolderOf(const Text& path) {
    ErrorRecord problem;
    const Text folder = FolderOf(path);
    if (!folder.empty() && !CreateLongDirectory(folder, &problem)) throw Error(problem);
}

}  // namespace

FileDownload::Outcome FileDownload::IncomingMessage(const Text& command, TextView params) {
    try {
        if (command == "FILE_DATA") return Write(params);
        if (command == "FILE_BEGIN") return Begin(params);
        Log("Unexpected file transfer message: " + command);
        return Outcome::Continues;
    } catch (...) {
        // A transfer that failed is over: it must not keep the next file out until the link drops.
        const Text description = CurrentError().Description;
        HandleError("FileDownload.IncomingMessage");
        return Fail("Error in FileDownload.IncomingMessage: " + description);
    }
}

FileDownload::Outcome FileDownload::Begin(TextView params) {
    const auto list = SplitParameters(params);
    if (list.size() < kBeginParameters) {
        Log("Invalid parameters on FILE_BEGIN");
        return Outcome::Continues;
    }
    m_path = list[0];
    m_size = ParseSize(list[1]);
    m_resumeAllowed = toBool(list[2]);
    Log("Incoming file transfer for \"" + m_path + "\" (" + NumberText(m_size) + " bytes)");

    const bool resume = m_resumeAllowed && FileExists(m_path);
    const std::int64_t length = resume ? FileLen(m_path) : 0;
    if (resume && length == m_size) {
        Log("Already have complete file");
        return Complete();
    }
    resume ? OpenExisting(length) : OpenNew();
    if (m_size == 0) return Complete();
    m_reply("FILE_BEGIN_OK", {NumberText(m_position)});
    return Outcome::Continues;
}

void FileDownload::OpenNew() {
    Log("Beginning file transfer");
    OpenOutput();
}

void FileDownload::OpenExisting(std::int64_t length) {
    if (length > m_size) {
        Log("Beginning file transfer (overwriting larger local file (" + NumberText(m_size) + " vs " +
            NumberText(length) + "))");
        return OpenOutput();
    }
    Log("Resuming file at position: " + NumberText(length));
    m_file.OpenFile(m_path, platform::FileAccess::Write, platform::FileShare::Read,
                    platform::FileDisposition::OpenExisting);
    m_file.SetPosition(0, platform::FileOrigin::End);
    m_position = m_file.Position();
}

void FileDownload::OpenOutput() {
    CreateFolderOf(m_path);
    m_file.OpenFile(m_path, platform::FileAccess::Write, platform::FileShare::Read,
                    platform::FileDisposition::CreateAlways);
    m_position = 0;
}

FileDownload::Outcome FileDownload::Write(TextView content) {
    m_file.WriteData(content);
    m_position += static_cast<std::int64_t>(content.size());
    if (m_position == m_size) return Complete();
    if (m_position > m_size) return Fail("Too much data");
    m_reply("FILE_MORE", {NumberText(m_position)});
    return Outcome::Continues;
}

FileDownload::Outcome FileDownload::Complete() {
    m_file.Close();  // what the server hears of as complete can be opened by anyone
    m_reply("FILE_COMPLETE", {});
    return Outcome::Complete;
}

FileDownload::Outcome FileDownload::Fail(const Text& reason) {
    m_reply("FILE_FAIL", {reason});
    return Outcome::Failed;
}

}  // namespace rvl
