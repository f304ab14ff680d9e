#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "net/file_download.h"

namespace rvl {

/// The service's incoming file transfer: at most one at a time.
class FileTransfers {
 public:
    using SendToServer =
        std::function<void(const Text& context, const Text& command, const std::vector<Text>& params)>;

    explicit FileTransfers(SendToServer sendToServer) : m_sendToServer(std::move(sendToServer)) {}

    /// True when a transfer with this context is active: its messages go to Continue, whatever their command.
    bool IsActive(TextView context) const { return m_download && m_download->Context() == context; }

    void Begin(const Text& context, TextView params);
    void Continue(const Text& command, TextView params);

    /// Drops the transfer without a word to the server; what is on disk stays for a resume.
    void Abandon() { m_download.reset(); }

 private:
    SendToServer m_sendToServer;
    std::shared_ptr<FileDownload> m_download;
};

}  // namespace rvl
