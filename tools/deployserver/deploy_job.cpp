#include "tools/deployserver/deploy_job.h"

#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

Text AlreadyDone(const UserOrder& order) {
    if (order.kind == OrderKind::Deploy) return "already deployed";
    return order.kind == OrderKind::MakeAvailable ? "already available" : "not there";
}

}  // namespace

void DeployJob::SendNext() {
    for (; m_index < m_orders.size(); ++m_index) {
        const UserOrder& order = m_orders[m_index];
        const Text line = Describe(order, m_version);
        if (!IsFulfilled(order, m_version, m_workstation.Report())) {
            m_workstation.PrintStep(line);
            m_commands.Reset();
            m_commands.Send(CommandOf(order), {NumberText(m_version.id), order.user});
            return m_commands.SendMarker();
        }
        m_workstation.PrintStep(line + ": " + AlreadyDone(order));
    }
    m_progress = m_failed ? Progress::Failed : Progress::Succeeded;
}

bool DeployJob::Take(const Message& message) {
    const auto taken = m_commands.Take(message);
    if (taken == SilentCommands::Taken::AllHandled) OnHandled();
    return taken != SilentCommands::Taken::Nothing;
}

void DeployJob::OnHandled() {
    const bool failed = m_commands.Errors() > 0;
    m_failed = m_failed || failed;
    m_workstation.PrintOutcome(Describe(m_orders[m_index], m_version) + (failed ? ": failed" : ": handled"));
    ++m_index;
    SendNext();
}

}  // namespace rvl::deployserver
