#pragma once

#include <optional>
#include <utility>

#include "tools/deployserver/file_push.h"
#include "tools/deployserver/published_folder.h"

namespace rvl::deployserver {

/// Sees to it that a workstation has a file: asks for its digest and pushes the file when it is missing or
/// another one. What the workstation holds of it is resumed, or overwritten when it turns out not to fit.
class FileDelivery : public Job {
 public:
    FileDelivery(Workstation& workstation, const PublishedFile& file, Text remotePath,
                 const TransferOptions& transfer, LinkCut& cut)
        : m_workstation(workstation),
          m_file(file),
          m_remotePath(std::move(remotePath)),
          m_transfer(transfer),
          m_cut(cut) {}

    void Start() override;
    bool Take(const Message& message) override;
    Progress CurrentProgress() const override { return m_progress; }

    bool WasPushed() const { return m_push.has_value(); }

 private:
    void OnDigest(const Message& answer);
    void Push(bool resumeAllowed);
    void ContinuePush();

    Workstation& m_workstation;
    const PublishedFile& m_file;
    const Text m_remotePath;
    const TransferOptions m_transfer;
    LinkCut& m_cut;
    Progress m_progress = Progress::Running;
    std::optional<FilePush> m_push;
};

}  // namespace rvl::deployserver
