#include "tools/deployserver/file_delivery.h"

#include "tools/deployserver/digest_question.h"
#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl::deployserver {

void FileDelivery::Start() {
    AskDigest(m_workstation, m_remotePath);
}

bool FileDelivery::Take(const Message& message) try {
    if (m_push) {
        if (!m_push->Take(message)) return false;
        ContinuePush();
        return true;
    }
    if (!IsDigestAnswer(message)) return false;
    OnDigest(message);
    return true;
} catch (...) {
    m_workstation.PrintOutcome("delivery failed: " + CurrentError().Description);
    m_progress = Progress::Failed;
    return true;
}

void FileDelivery::OnDigest(const Message& answer) {
    const Text digest = DigestOf(answer);
    const bool same = !digest.empty() && EqualsNoCase(digest, m_file.digest);
    m_workstation.PrintStep("FILE_MD5 \"" + m_remotePath + "\" " +
                            (same             ? "is there already"
                             : digest.empty() ? "is missing"
                                              : "differs"));
    if (same)
        m_progress = Progress::Succeeded;
    else
        Push(m_transfer.resumeAllowed);
}

void FileDelivery::Push(bool resumeAllowed) {
    m_push.emplace(m_workstation, PushOrder{m_file.localPath, m_remotePath},
                   TransferOptions{m_transfer.pieceSize, resumeAllowed}, m_cut, m_file.digest);
    m_push->Start();
    m_progress = m_push->CurrentProgress();
}

void FileDelivery::ContinuePush() {
    m_progress = m_push->CurrentProgress();
    if (m_progress != Progress::Failed || !m_push->HasWrongBeginning()) return;
    m_workstation.PrintStep("the workstation held another file: pushing this one from its beginning");
    Push(false);
}

}  // namespace rvl::deployserver
