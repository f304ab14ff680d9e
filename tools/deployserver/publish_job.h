#pragma once

#include <optional>

#include "tools/deployserver/file_delivery.h"
#include "tools/deployserver/frontend_version.h"
#include "tools/deployserver/silent_commands.h"

namespace rvl::deployserver {

/// Makes a version known to a workstation: announces it unless the workstation reports it, delivers the files
/// that it lacks to its staging folder and confirms them.
class PublishJob : public Job {
 public:
    PublishJob(Workstation& workstation, const FrontendVersion& version, const TransferOptions& transfer,
               LinkCut& cut)
        : m_workstation(workstation),
          m_version(version),
          m_transfer(transfer),
          m_cut(cut),
          m_commands(workstation) {}

    void Start() override;
    bool Take(const Message& message) override;
    Progress CurrentProgress() const override { return m_progress; }

 private:
    void Announce();
    void StartFile();
    void ContinueFiles();
    void ConfirmFile();
    void EndFiles();
    void OnAllHandled();
    void Fail(const Text& reason);

    Workstation& m_workstation;
    const FrontendVersion& m_version;
    const TransferOptions m_transfer;
    LinkCut& m_cut;
    SilentCommands m_commands;
    Progress m_progress = Progress::Running;
    Text m_stagingFolder;
    bool m_announced = false;   ///< by this job
    bool m_confirmAll = false;  ///< or only what is pushed
    std::size_t m_index = 0;    ///< of the file that is delivered
    std::optional<FileDelivery> m_delivery;
    int m_pushed = 0;
};

}  // namespace rvl::deployserver
