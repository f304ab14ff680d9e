#include "runtime/log_file.h"

#include "platform/clock.h"
#include "platform/file_handle.h"
#include "platform/process.h"
#include "runtime/file.h"
#include "runtime/folders.h"
#include "runtime/process_state.h"
#include "runtime/system_information.h"
#include "util/dates.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr TextView kLineEnd = "\r\n";

/// Process ids of Windows 9x are large unsigned values, read best in hexadecimal.
Text ProcessIdText() {
    const std::uint32_t id = platform::ProcessId();
    return IsWinNT() ? NumberText(id) : HexString(static_cast<std::int32_t>(id));
}

Text Prefix(bool suppressTag) {
    Text prefix = FormatDateTime(platform::LocalNow()) + " [Client ";
    if (!State().LogTag.empty() && !suppressTag) prefix += State().LogTag + " ";
    return prefix + ProcessIdText() + "] ";
}

Text WithoutExtension(const Text& fileName) {
    const std::size_t dot = fileName.rfind('.');
    return dot == Text::npos ? fileName : fileName.substr(0, dot);
}

/// The last `keep` bytes of the log from their first whole line on; empty when they hold no line end.
Text ReadKeptLines(const Text& path, std::int64_t excess, std::int64_t keep) {
    File file;
    file.OpenFile(path, platform::FileAccess::Read, platform::FileShare::ReadWrite,
                  platform::FileDisposition::OpenExisting);
    file.SetPosition(excess, platform::FileOrigin::Begin);
    const Text kept = file.ReadData(keep);
    const std::size_t lineEnd = kept.find(kLineEnd);
    return lineEnd == Text::npos ? Text() : kept.substr(lineEnd + kLineEnd.size());
}

void CutLog(const Text& path, std::int64_t excess, std::int64_t keep) try {
    const Text kept = ReadKeptLines(path, excess, keep);
    File file;
    file.OpenFile(path, platform::FileAccess::Write, platform::FileShare::ReadWrite,
                  platform::FileDisposition::CreateAlways);
    file.WriteData(kept);
    file.Close();
    Log("Log file trimmed");
} catch (...) {
    HandleError("Globals.TrimLogFile");
}

/// A file-content message with its content left out, whatever context the transfer has; else the empty text.
Text WithoutFileContent(TextView data) {
    constexpr TextView kUpload("FILE_UPLOAD\0FILE_DATA", 21);
    if (data.starts_with(kUpload)) return Text(kUpload) + Text("\0[...]", 6);
    const std::size_t contextEnd = data.find('\0');
    if (contextEnd == TextView::npos) return Text();
    const std::size_t commandEnd = data.find('\0', contextEnd + 1);
    const TextView command = data.substr(contextEnd + 1, commandEnd - contextEnd - 1);
    if (commandEnd == TextView::npos || UpperCase(TrimView(command)) != "FILE_DATA") return Text();
    return Text(data.substr(0, commandEnd + 1)) + "[...]";
}

Text PrintableForm(TextView text) {
    return ContainsNonPrintableCharacters(text) ? HexDumpString(text) : Text(text);
}

}  // namespace

Text LogPathOf(const Text& executable) {
    return FolderOf(executable) + WithoutExtension(FileNameOf(executable)) + ".log";
}

Text LogPath() {
    static const Text path = LogPathOf(Self());
    return path;
}

void Log(TextView text, bool suppressTag) noexcept {
    try {
        const Text entry = Prefix(suppressTag) + Text(text) + Text(kLineEnd);
        platform::FileHandle file;
        const int code = file.Open(LogPath(), platform::FileAccess::Append, platform::FileShare::ReadWrite,
                                   platform::FileDisposition::OpenAlways);
        std::size_t written = 0;
        if (code == 0) file.Write(entry.data(), entry.size(), written);
    } catch (...) {  // whoever logs goes on, whatever happens to the entry
    }
}

bool TrimLogFile(std::int64_t keepBytes, std::int64_t thresholdBytes) try {
    const Text path = LogPath();
    if (!FileExists(path)) return false;
    const std::int64_t size = FileLen(path);
    if (size < thresholdBytes) return false;
    const std::int64_t excess = size - keepBytes;
    if (excess <= 0) return true;
    Log("Trimming log file");
    CutLog(path, excess, keepBytes);
    return true;
} catch (...) {
    HandleError("Globals.TrimLogFile");
    return true;
}

void MaybeLogProtocolData(TextView data, bool outgoing, TextView peer) try {
    constexpr std::size_t kLongest = 1024;
    Text line = peer.empty() ? Text() : Text(peer) + ": ";
    line += outgoing ? "--> " : "<-- ";
    const Text abbreviated = WithoutFileContent(data);
    if (!abbreviated.empty()) data = abbreviated;
    line += PrintableForm(data.substr(0, kLongest));
    if (data.size() > kLongest) line += " [...]";
    Log(line);
} catch (...) {
    HandleError("Globals.MaybeLogProtocolData");
}

}  // namespace rvl
