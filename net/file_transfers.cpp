#include "net/file_transfers.h"

#include "runtime/log_file.h"

namespace rvl {

void FileTransfers::Begin(const Text& context, TextView params) {
    constexpr const char* kOneAtOnce = "Cannot accept more than one file at once";
    if (m_download) {
        Log(kOneAtOnce);
        return m_sendToServer(context, "ERROR", {kOneAtOnce});
    }
    m_download = std::make_shared<FileDownload>(
        context, [this, context](const Text& command, const std::vector<Text>& reply) {
            m_sendToServer(context, command, reply);
        });
    Continue("FILE_BEGIN", params);
}

void FileTransfers::Continue(const Text& command, TextView params) {
    // Held here while it works: sending a reply lets events run, and a lost link abandons the transfer.
    const std::shared_ptr<FileDownload> download = m_download;
    if (!download) return;
    const FileDownload::Outcome outcome = download->IncomingMessage(command, params);
    if (outcome == FileDownload::Outcome::Continues) return;
    Log(outcome == FileDownload::Outcome::Complete ? "Download complete" : "Download failed");
    if (m_download == download) m_download.reset();
}

}  // namespace rvl
