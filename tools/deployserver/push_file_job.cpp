#include "tools/deployserver/push_file_job.h"

#include "runtime/file_digest.h"
#include "util/handle_error.h"
#include "util/parameters.h"
#include "util/text_functions.h"
#include "util/tick_count.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kTransferContext = "FILE_UPLOAD";  // clients leave its content out of their log
constexpr const char* kDigestContext = "FILE_DIGEST";

Text Describe(const Message& message) {
    return message.command + "|" + message.params;
}

[[noreturn]] void RaiseUnexpected(const Message& message) {
    throw Error(kApplicationErrorBase + 1, "PushFileJob", "unexpected answer " + Describe(message));
}

}  // namespace

PushFileJob::PushFileJob(Workstation& workstation, const PushOrder& order, LinkCut& cut)
    : m_workstation(workstation), m_order(order), m_cut(cut), m_pieces(kTransferContext) {}

void PushFileJob::Send(const Text& context, const Text& command, const std::vector<Text>& params) {
    m_workstation.Send(MakeMessage(context, command, JoinParameters(params)));
}

void PushFileJob::Start() try {
    m_pieces.Open(m_order.localFile);
    m_begun = GetTickCountEx();
    const Text size = NumberText(m_pieces.FileSize());
    m_workstation.PrintStep("FILE_BEGIN \"" + m_order.remotePath + "\" " + size + " bytes, pieces of " +
                            NumberText(static_cast<std::int64_t>(m_order.pieceSize)) + ", resume " +
                            (m_order.resumeAllowed ? "allowed" : "not allowed"));
    Send(kTransferContext, "FILE_BEGIN", {m_order.remotePath, size, m_order.resumeAllowed ? "1" : "0"});
} catch (...) {
    Fail("push failed: " + CurrentError().Description);
}

bool PushFileJob::Take(const Message& message) try {
    const bool transfer = message.context == kTransferContext;
    if (!transfer && message.context != kDigestContext) return false;
    if (m_stage == Stage::Cut) return true;  // what the workstation sent before it noticed
    transfer ? OnTransferMessage(message) : OnDigestMessage(message);
    return true;
} catch (...) {
    Fail("push failed: " + CurrentError().Description);
    m_workstation.CloseLink();  // the workstation would wait for the rest of the file for ever
    return true;
}

void PushFileJob::Fail(const Text& line) {
    m_workstation.PrintOutcome(line);
    m_progress = Progress::Failed;
}

// Transfer

void PushFileJob::OnTransferMessage(const Message& message) {
    if (message.command == "FILE_FAIL") return Fail("FILE_FAIL " + message.params);
    if (message.command == "FILE_BEGIN_OK" && m_stage == Stage::Announced) return OnBeginOk(message);
    if (message.command == "FILE_MORE" && m_stage == Stage::Sending) return OnMore(message);
    if (message.command == "FILE_COMPLETE" && m_stage != Stage::DigestAsked) return OnComplete();
    RaiseUnexpected(message);
}

void PushFileJob::OnBeginOk(const Message& message) {
    const std::int64_t position = PositionOf(message);
    m_workstation.PrintStep("FILE_BEGIN_OK from position " + NumberText(position));
    m_stage = Stage::Sending;
    m_tenthsPrinted = position * 10 / m_pieces.FileSize();
    m_next = position;
    FillWindow();
}

void PushFileJob::OnMore(const Message& message) {
    const std::int64_t position = PositionOf(message);
    if (m_unacknowledged.empty() || m_unacknowledged.front() != position) RaiseUnexpected(message);
    m_unacknowledged.pop_front();
    PrintPosition(position);
    FillWindow();
}

std::int64_t PushFileJob::PositionOf(const Message& message) const {
    const auto position = ParseInteger64(message.params);
    if (!position || *position < 0 || *position >= m_pieces.FileSize()) RaiseUnexpected(message);
    return *position;
}

std::size_t PushFileJob::PieceSizeAt(std::int64_t position) const {
    const auto piece = static_cast<std::int64_t>(m_cut.Limit(m_order.pieceSize));
    return static_cast<std::size_t>(std::min(piece, m_pieces.FileSize() - position));
}

/// Pieces are on their way while the workstation stores the one before: neither side waits for the other.
void PushFileJob::FillWindow() {
    constexpr std::size_t kPiecesOnTheirWay = 4;
    while (m_stage == Stage::Sending && m_next < m_pieces.FileSize() &&
           m_unacknowledged.size() < kPiecesOnTheirWay)
        SendPiece();
}

void PushFileJob::SendPiece() {
    const std::int64_t position = m_next;
    const std::size_t size = PieceSizeAt(position);
    const TextView message = m_pieces.MessageAt(position, size);
    // Counted before it is sent: sending lets events run, and the acknowledgement of another piece may be
    // one.
    m_next += static_cast<std::int64_t>(size);
    m_sent += static_cast<std::int64_t>(size);
    m_unacknowledged.push_back(m_next);
    m_workstation.Send(message);
    if (m_cut.IsDueAfter(size)) CutLink();
}

void PushFileJob::CutLink() {
    const bool findAgain = m_cut.Method() == CutMethod::FindAgain;
    m_stage = Stage::Cut;
    m_workstation.PrintStep("cut after " + NumberText(m_sent) + " bytes, " +
                            (findAgain ? "FIND_SERVER_AGAIN" : "closing the connection"));
    if (findAgain)
        Send("", "FIND_SERVER_AGAIN", {});
    else
        m_workstation.CloseLink();
}

void PushFileJob::PrintPosition(std::int64_t position) {
    const std::int64_t tenths = position * 10 / m_pieces.FileSize();
    if (tenths <= m_tenthsPrinted) return;
    m_tenthsPrinted = tenths;
    m_workstation.PrintStep("FILE_MORE " + NumberText(tenths * 10) + "% from position " +
                            NumberText(position));
}

void PushFileJob::OnComplete() {
    const auto took = static_cast<std::int64_t>(GetTickCountEx() - m_begun);
    m_workstation.PrintStep("FILE_COMPLETE after " + NumberText(took) + " ms, " + NumberText(m_sent) +
                            " bytes sent");
    m_stage = Stage::DigestAsked;
    Send(kDigestContext, "GET_FILE_MD5", {m_order.remotePath});
    m_ownDigest = MD5SumOfFile(m_order.localFile);  // while the workstation takes its own
}

// Digest

void PushFileJob::OnDigestMessage(const Message& message) {
    if (m_stage != Stage::DigestAsked || message.command != "FILE_MD5") RaiseUnexpected(message);
    const auto params = SplitParameters(message.params);
    CompareDigest(params.size() > 1 ? params[1] : Text());
}

void PushFileJob::CompareDigest(const Text& digest) {
    const Text shown = "FILE_MD5 " + (digest.empty() ? "(none)" : digest);
    const bool matches = !digest.empty() && EqualsNoCase(digest, m_ownDigest);
    if (!matches) return Fail(shown + " does not match, expected " + m_ownDigest);
    m_workstation.PrintOutcome(shown + " matches");
    m_progress = Progress::Succeeded;
}

}  // namespace rvl::deployserver
