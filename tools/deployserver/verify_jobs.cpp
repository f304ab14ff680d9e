#include "tools/deployserver/verify_jobs.h"

#include <algorithm>

namespace rvl::deployserver {
namespace {

constexpr int kMostRounds = 2;

bool AreAllFulfilled(const Workstation& workstation, const Verification& verification) {
    return std::all_of(verification.orders.begin(), verification.orders.end(), [&](const UserOrder& order) {
        return IsFulfilled(order, verification.version, workstation.Report());
    });
}

void PrintJudgements(Workstation& workstation, const Verification& verification) {
    for (const UserOrder& order : verification.orders)
        workstation.PrintOutcome(Judgement(order, verification.version, workstation.Report()));
}

}  // namespace

void JudgeJob::Start() {
    PrintJudgements(m_workstation, m_verification);
    const bool fulfilled = AreAllFulfilled(m_workstation, m_verification);
    if (!fulfilled && m_verification.rounds < kMostRounds) {
        m_progress = Progress::Succeeded;
        return;
    }
    m_verification.rounds = 0;
    m_progress = fulfilled ? Progress::NothingLeft : Progress::Failed;
}

void LogInAgainJob::Start() {
    if (AreAllFulfilled(m_workstation, m_verification)) {
        PrintJudgements(m_workstation, m_verification);
        m_verification.rounds = 0;
        m_progress = Progress::Succeeded;
        return;
    }
    ++m_verification.rounds;
    m_workstation.PrintStep("FIND_SERVER_AGAIN, to see the report of the next login");
    m_workstation.Send(MakeMessage("", "FIND_SERVER_AGAIN", ""));
}

}  // namespace rvl::deployserver
