#pragma once

#include "tools/deployserver/job.h"
#include "tools/deployserver/user_order.h"

namespace rvl::deployserver {

/// What orders came to is known only from the report after the next login. `rounds` counts how often a
/// workstation was sent to log in again after its orders were carried out; it outlives the link.
struct Verification {
    const std::vector<UserOrder>& orders;
    OrderedVersion version;
    int& rounds;
};

/// At a login after such a round: judges every order by the report, one line each. What is not fulfilled may
/// be carried out once more.
class JudgeJob : public Job {
 public:
    JudgeJob(Workstation& workstation, const Verification& verification)
        : m_workstation(workstation), m_verification(verification) {}

    void Start() override;
    bool Take(const Message&) override { return false; }
    Progress CurrentProgress() const override { return m_progress; }

 private:
    Workstation& m_workstation;
    const Verification m_verification;
    Progress m_progress = Progress::Running;
};

/// After the orders: sends the workstation to log in again, unless the report it has sent is proof already.
class LogInAgainJob : public Job {
 public:
    LogInAgainJob(Workstation& workstation, const Verification& verification)
        : m_workstation(workstation), m_verification(verification) {}

    void Start() override;
    bool Take(const Message&) override { return false; }
    Progress CurrentProgress() const override { return m_progress; }

 private:
    Workstation& m_workstation;
    const Verification m_verification;
    Progress m_progress = Progress::Running;  ///< until the link drops
};

}  // namespace rvl::deployserver
