#pragma once

#include <deque>

#include "tools/deployserver/file_pieces.h"
#include "tools/deployserver/job.h"
#include "tools/deployserver/link_cut.h"

namespace rvl::deployserver {

/// Pushes one file: FILE_BEGIN, a piece from wherever the workstation asks for it, until it has all of them;
/// then asks for the digest and compares it with that of the local file.
class PushFileJob : public Job {
 public:
    PushFileJob(Workstation& workstation, const PushOrder& order, LinkCut& cut);

    void Start() override;
    bool Take(const Message& message) override;
    Progress CurrentProgress() const override { return m_progress; }

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
    void OnDigestMessage(const Message& message);
    void CompareDigest(const Text& digest);
    void Fail(const Text& line);

    Workstation& m_workstation;
    const PushOrder& m_order;
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
};

}  // namespace rvl::deployserver
