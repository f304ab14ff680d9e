#pragma once

#include <utility>

#include "tools/deployserver/awaited_updates.h"
#include "tools/deployserver/file_delivery.h"

namespace rvl::deployserver {

/// The executable that is delivered, and where to; an empty path is below the common application data.
struct NewExecutable {
    PublishedFile file;
    Text remotePath;
};

/// Delivers the new executable and tells the workstation to update itself, which costs the link.
class UpdateJob : public Job {
 public:
    UpdateJob(Workstation& workstation, const NewExecutable& executable, AwaitedUpdates& updates,
              const TransferOptions& transfer, LinkCut& cut);

    void Start() override;
    bool Take(const Message& message) override;
    Progress CurrentProgress() const override { return m_progress; }
    bool IsIndependent() const override { return true; }

 private:
    void ContinueDelivery();
    void OrderUpdate();
    void Fail(const Text& reason);

    Workstation& m_workstation;
    AwaitedUpdates& m_updates;
    const Text m_remotePath;
    FileDelivery m_delivery;
    Progress m_progress = Progress::Running;  ///< once it is ordered: until the link drops
    bool m_ordered = false;
};

/// When the workstation has come back.
class UpdateResultJob : public Job {
 public:
    UpdateResultJob(Workstation& workstation, AwaitedUpdates& updates)
        : m_workstation(workstation), m_updates(updates) {}

    void Start() override {
        m_progress = m_updates.Judge(m_workstation) ? Progress::Succeeded : Progress::Failed;
    }
    bool Take(const Message&) override { return false; }
    Progress CurrentProgress() const override { return m_progress; }

 private:
    Workstation& m_workstation;
    AwaitedUpdates& m_updates;
    Progress m_progress = Progress::Running;
};

}  // namespace rvl::deployserver
