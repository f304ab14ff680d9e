#include "tools/deployserver/file_push.h"

#include "runtime/file_digest.h"
#include "tools/deployserver/digest_question.h"
#include "util/handle_error.h"
#include "util/parameters.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kTransferContext = "FILE_UPLOAD";  // clients leave its content out of their log

}  // namespace

FilePush::FilePush(Workstation& workstation, PushOrder order, const TransferOptions& transfer, LinkCut& cut,
                   Text digest)
    : m_workstation(workstation),
      m_order(std::move(order)),
      m_transfer(transfer),
      m_cut(cut),
      m_pieces(kTransferContext),
      m_ownDigest(std::move(digest)) {}

void FilePush::Send(const Text& context, const Text& command, const std::vector<Text>& params) {
    m_workstation.Send(MakeMessage(context, command, JoinParameters(params)));
}

void FilePush::Start() try {
    m_pieces.Open(m_order.localFile);
    m_begun = GetTickCountEx();
    const Text size = NumberText(m_pieces.FileSize());
    m_workstation.PrintStep("FILE_BEGIN \"" + m_order.remotePath + "\" " + size + " bytes, pieces of " +
                            NumberText(static_cast<std::int64_t>(m_transfer.pieceSize)) + ", resume " +
                            (m_transfer.resumeAllowed ? "allowed" : "not allowed"));
    Send(kTransferContext, "FILE_BEGIN", {m_order.remotePath, size, m_transfer.resumeAllowed ? "1" : "0"});
} catch (...) {
    Fail("push failed: " + CurrentError().Description);
}

bool FilePush::Take(const Message& message) try {
    const bool transfer = message.context == kTransferContext;
    if (!transfer && !IsDigestAnswer(message)) return false;
    if (m_stage == Stage::Cut) return true;  // what the workstation sent before it noticed
    transfer ? OnTransferMessage(message) : CompareDigest(message);
    return true;
} catch (...) {
    Fail("push failed: " + CurrentError().Description);
    m_workstation.CloseLink();  // the workstation would wait for the rest of the file for ever
    return true;
}

void FilePush::Fail(const Text& line) {
    m_workstation.PrintOutcome(line);
    m_progress = Progress::Failed;
}

// Transfer

void FilePush::OnTransferMessage(const Message& message) {
    if (message.command == "FILE_FAIL") return Fail("FILE_FAIL " + message.params);
    if (message.command == "FILE_BEGIN_OK" && m_stage == Stage::Announced) return OnBeginOk(message);
    if (message.command == "FILE_MORE" && m_stage == Stage::Sending) return OnMore(message);
    if (message.command == "FILE_COMPLETE" && m_stage != Stage::DigestAsked) return OnComplete();
    RaiseUnexpected(message);
}

void FilePush::OnBeginOk(const Message& message) {
    const std::int64_t position = PositionOf(message);
    m_workstation.PrintStep("FILE_BEGIN_OK from position " + NumberText(position));
    m_stage = Stage::Sending;
    m_tenthsPrinted = position * 10 / m_pieces.FileSize();
    m_next = position;
    FillWindow();
}

void FilePush::OnMore(const Message& message) {
    const std::int64_t position = PositionOf(message);
    if (m_unacknowledged.empty() || m_unacknowledged.front() != position) RaiseUnexpected(message);
    m_unacknowledged.pop_front();
    PrintPosition(position);
    FillWindow();
}

std::int64_t FilePush::PositionOf(const Message& message) const {
    const auto position = ParseInteger64(message.params);
    if (!position || *position < 0 || *position >= m_pieces.FileSize()) RaiseUnexpected(message);
    return *position;
}

std::size_t FilePush::PieceSizeAt(std::int64_t position) const {
    const auto piece = static_cast<std::int64_t>(m_cut.Limit(m_transfer.pieceSize));
    return static_cast<std::size_t>(std::min(piece, m_pieces.FileSize() - position));
}

/// Pieces are on their way while the workstation stores the one before: neither side waits for the other.
void FilePush::FillWindow() {
    constexpr std::size_t kPiecesOnTheirWay = 4;
    while (m_stage == Stage::Sending && m_next < m_pieces.FileSize() &&
           m_unacknowledged.size() < kPiecesOnTheirWay)
        SendPiece();
}

void FilePush::SendPiece() {
    const std::int64_t position = m_next;
    const std::size_t size = PieceSizeAt(position);
    const TextView message = m_pieces.MessageAt(position, size);
    m_next += static_cast<std::int64_t>(size);
    m_sent += static_cast<std::int64_t>(size);
    m_unacknowledged.push_back(m_next);
    m_workstation.Send(message);
    if (m_cut.IsDueAfter(size)) CutLink();
}

void FilePush::CutLink() {
    const bool findAgain = m_cut.Method() == CutMethod::FindAgain;
    m_stage = Stage::Cut;
    m_workstation.PrintStep("cut after " + NumberText(m_sent) + " bytes, " +
                            (findAgain ? "FIND_SERVER_AGAIN" : "closing the connection"));
    if (findAgain)
        Send("", "FIND_SERVER_AGAIN", {});
    else
        m_workstation.CloseLink();
}

void FilePush::PrintPosition(std::int64_t position) {
    const std::int64_t tenths = position * 10 / m_pieces.FileSize();
    if (tenths <= m_tenthsPrinted) return;
    m_tenthsPrinted = tenths;
    m_workstation.PrintStep("FILE_MORE " + NumberText(tenths * 10) + "% from position " +
                            NumberText(position));
}

void FilePush::OnComplete() {
    const auto took = static_cast<std::int64_t>(GetTickCountEx() - m_begun);
    m_workstation.PrintStep("FILE_COMPLETE after " + NumberText(took) + " ms, " + NumberText(m_sent) +
                            " bytes sent");
    m_stage = Stage::DigestAsked;
    AskDigest(m_workstation, m_order.remotePath);
    // While the workstation takes its own.
    if (m_ownDigest.empty()) m_ownDigest = MD5SumOfFile(m_order.localFile);
}

// Digest

void FilePush::CompareDigest(const Message& answer) {
    if (m_stage != Stage::DigestAsked) RaiseUnexpected(answer);
    const Text digest = DigestOf(answer);
    const Text shown = "FILE_MD5 " + (digest.empty() ? "(none)" : digest);
    m_differs = digest.empty() || !EqualsNoCase(digest, m_ownDigest);
    if (m_differs) return Fail(shown + " does not match, expected " + m_ownDigest);
    m_workstation.PrintOutcome(shown + " matches");
    m_progress = Progress::Succeeded;
}

}  // namespace rvl::deployserver
