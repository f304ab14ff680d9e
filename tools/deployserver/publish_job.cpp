#include "tools/deployserver/publish_job.h"

#include "util/text_functions.h"

namespace rvl::deployserver {

void PublishJob::Start() {
    m_stagingFolder = StagingFolder(m_version, m_workstation.LoginData().commonAppData);
    const ReportRecord* known = m_workstation.Report().Find(m_version.versionId, "");
    const bool same = known != nullptr && known->frontendId == m_version.frontendId &&
                      known->fileCount == m_version.FileCount();
    m_confirmAll = !same || known->present != known->fileCount;
    if (!same) Announce();
    StartFile();
}

/// The workstation forgets what it knew of the version, its confirmed files included.
void PublishJob::Announce() {
    m_announced = m_confirmAll = true;
    m_workstation.PrintStep("FRONTEND_ADD frontend " + NumberText(m_version.frontendId) + " version " +
                            NumberText(m_version.versionId) + " \"" + m_version.name + "\" " +
                            NumberText(m_version.FileCount()) + " files to \"" + m_stagingFolder + "\"");
    m_commands.Send("FRONTEND_ADD", AnnouncementOf(m_version, m_stagingFolder));
}

bool PublishJob::Take(const Message& message) {
    const auto taken = m_commands.Take(message);
    if (taken == SilentCommands::Taken::AllHandled) OnAllHandled();
    if (taken != SilentCommands::Taken::Nothing) return true;
    if (!m_delivery || !m_delivery->Take(message)) return false;
    ContinueFiles();
    return true;
}

// Files

void PublishJob::StartFile() {
    const PublishedFile& file = m_version.files[m_index];
    m_delivery.emplace(m_workstation, file, m_stagingFolder + file.name, m_transfer, m_cut);
    m_delivery->Start();
}

void PublishJob::ContinueFiles() {
    if (m_delivery->CurrentProgress() == Progress::Running) return;
    if (m_delivery->CurrentProgress() == Progress::Failed)
        return Fail("\"" + m_version.files[m_index].name + "\" could not be delivered");
    if (m_delivery->WasPushed()) ++m_pushed;
    if (m_confirmAll || m_delivery->WasPushed()) ConfirmFile();
    m_delivery.reset();
    ++m_index;
    m_index < m_version.files.size() ? StartFile() : EndFiles();
}

void PublishJob::ConfirmFile() {
    const Text& name = m_version.files[m_index].name;
    m_workstation.PrintStep("FRONTEND_FILE_ADD \"" + name + "\"");
    m_commands.Send("FRONTEND_FILE_ADD",
                    {NumberText(m_version.frontendId), NumberText(m_version.versionId), name});
}

void PublishJob::EndFiles() {
    m_commands.AnySent() ? m_commands.SendMarker() : OnAllHandled();
}

// End

void PublishJob::OnAllHandled() {
    if (m_commands.Errors() == 0) {
        m_progress = Progress::Succeeded;
        return m_workstation.PrintOutcome("PUBLISHED frontend " + NumberText(m_version.frontendId) +
                                          " version " + NumberText(m_version.versionId) + ", " +
                                          NumberText(m_version.FileCount()) + " files, " +
                                          NumberText(m_pushed) + " of them pushed");
    }
    if (m_announced) return Fail(NumberText(m_commands.Errors()) + " commands were refused");
    m_workstation.PrintStep("what the workstation has of this version is not where it is published now");
    m_commands.Reset();
    m_index = 0;
    Announce();
    StartFile();
}

void PublishJob::Fail(const Text& reason) {
    m_progress = Progress::Failed;
    m_workstation.PrintOutcome("NOT PUBLISHED frontend " + NumberText(m_version.frontendId) + " version " +
                               NumberText(m_version.versionId) + ": " + reason);
}

}  // namespace rvl::deployserver
