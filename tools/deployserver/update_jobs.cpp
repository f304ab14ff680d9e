#include "tools/deployserver/update_jobs.h"

#include "util/path_text.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kContext = "UPDATE";

Text RemotePath(const NewExecutable& executable, const Login& login) {
    if (!executable.remotePath.empty()) return executable.remotePath;
    return WithTrailingBackslash(login.commonAppData) + "Ravelin\\Client\\Update\\" + executable.file.name;
}

}  // namespace

UpdateJob::UpdateJob(Workstation& workstation, const NewExecutable& executable, AwaitedUpdates& updates,
                     const TransferOptions& transfer, LinkCut& cut)
    : m_workstation(workstation),
      m_updates(updates),
      m_remotePath(RemotePath(executable, workstation.LoginData())),
      m_delivery(workstation, executable.file, m_remotePath, transfer, cut) {}

void UpdateJob::Start() {
    if (!m_updates.IsUpToDate(m_workstation)) return m_delivery.Start();
    m_workstation.PrintOutcome("UPDATE " + m_workstation.LoginData().computer + ": already " +
                               m_workstation.Version());
    m_progress = Progress::Succeeded;
}

bool UpdateJob::Take(const Message& message) {
    if (!m_ordered) {
        if (!m_delivery.Take(message)) return false;
        ContinueDelivery();
        return true;
    }
    if (message.context != kContext) return false;
    m_updates.Withdraw(m_workstation);
    Fail(message.command + " " + message.params);
    return true;
}

void UpdateJob::ContinueDelivery() {
    if (m_delivery.CurrentProgress() == Progress::Failed) Fail("the executable could not be delivered");
    if (m_delivery.CurrentProgress() == Progress::Succeeded) OrderUpdate();
}

/// Only a refusal is answered. Sending lets events run: by then it has to be known what is awaited.
void UpdateJob::OrderUpdate() {
    m_ordered = true;
    m_updates.Await(m_workstation);
    m_workstation.PrintStep("UPDATED_BINARY \"" + m_remotePath + "\"");
    m_workstation.Send(MakeMessage(kContext, "UPDATED_BINARY", m_remotePath));
}

void UpdateJob::Fail(const Text& reason) {
    m_progress = Progress::Failed;
    m_workstation.PrintOutcome("NOT UPDATED " + m_workstation.LoginData().computer + ": " + reason);
}

}  // namespace rvl::deployserver
