#pragma once

#include <deque>
#include <utility>

#include "tools/deployserver/file_pieces.h"
#include "tools/deployserver/job.h"
#include "tools/deployserver/link_cut.h"

namespace rvl::deployserver {

/// Pushes one file: FILE_BEGIN, a piece from wherever the workstation asks for it, until it has all of them;
/// then asks for the digest and compares it with that of the local file.
class FilePush : public Job {
 public:
    /// The digest is that of the local file; an empty one is taken when it is needed.
    FilePush(Workstation& workstation, PushOrder order, const TransferOptions& transfer, LinkCut& cut,
             Text digest = "");

    void Start() override;
    bool Take(const Message& message) override;
    Progress CurrentProgress() const override { return m_progress; }

    /// After a failure, true when the workstation had a part of the file to which the rest does not fit.
    bool HasWrongBeginning() const { return m_differs && m_sent < m_pieces.FileSize(); }

 private:
    enum class Stage { Announced, Sending, DigestAsked, Cut };

    void Send(const Text& context, const Text& command, const std::vector<Text>& params);
    void OnTransferMessage(const Message& message);
    void OnBeginOk(const Message& message);
    void OnMore(const Message& message);
    void OnComplete();
    std::int64_t PositionOf(const Message& message) const;
    std::size_t PieceSizeAt(std::int64_t position) const;
    void FillWindow();
    void SendPiece();
    void CutLink();
    void PrintPosition(std::int64_t position);
    void CompareDigest(const Message& answer);
    void Fail(const Text& line);

    Workstation& m_workstation;
    const PushOrder m_order;
    const TransferOptions m_transfer;
    LinkCut& m_cut;
    FilePieces m_pieces;
    Progress m_progress = Progress::Running;
    Stage m_stage = Stage::Announced;
    std::uint64_t m_begun = 0;
    std::int64_t m_sent = 0;
    std::int64_t m_next = 0;                    ///< position of the next piece
    std::deque<std::int64_t> m_unacknowledged;  ///< end positions of the pieces on their way
    std::int64_t m_tenthsPrinted = 0;
    Text m_ownDigest;
    bool m_differs = false;
};

}  // namespace rvl::deployserver
