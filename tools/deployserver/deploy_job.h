#pragma once

#include "tools/deployserver/silent_commands.h"
#include "tools/deployserver/user_order.h"

namespace rvl::deployserver {

/// Carries out the orders for users that the workstation's report does not show as fulfilled, one after the
/// other. One that fails does not keep the next ones back.
class DeployJob : public Job {
 public:
    DeployJob(Workstation& workstation, const std::vector<UserOrder>& orders, const OrderedVersion& version)
        : m_workstation(workstation), m_orders(orders), m_version(version), m_commands(workstation) {}

    void Start() override { SendNext(); }
    bool Take(const Message& message) override;
    Progress CurrentProgress() const override { return m_progress; }

 private:
    void SendNext();
    void OnHandled();

    Workstation& m_workstation;
    const std::vector<UserOrder>& m_orders;
    const OrderedVersion m_version;
    SilentCommands m_commands;
    Progress m_progress = Progress::Running;
    std::size_t m_index = 0;  ///< of the order that is carried out
    bool m_failed = false;
};

}  // namespace rvl::deployserver
