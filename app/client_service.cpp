#include "app/client_service.h"

#include "app/helper_run_entry.h"
#include "app/service_control.h"
#include "deploy/ntfs_permissions.h"
#include "platform/desktop_windows.h"
#include "platform/event_loop.h"
#include "platform/service_process.h"
#include "runtime/folder_paths.h"
#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "runtime/system_information.h"
#include "runtime/terminate.h"
#include "session/access_installations.h"
#include "ui/service_view.h"
#include "ui/toolkit.h"
#include "util/handle_error.h"
#include "util/random_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr const char* kCaption = "Ravelin Client Service";

}  // namespace

frmClientService::frmClientService()
    : m_database({Self(), CommonAppDataPath()}),
      m_link(*this),
      m_update(*this),
      m_hub(*this),
      m_transfers([this](const Text& context, const Text& command, const std::vector<Text>& params) {
          SendToServer(context, command, params);
      }),
      m_registration(m_database, *this),
      m_removal(m_database, m_hub),
      m_deployment(m_database, *this, m_removal, m_hub),
      m_report(m_database, *this),
      m_frontendCommands(m_registration, m_deployment, m_removal),
      m_commands({*this, *this, m_transfers, m_hub, m_frontendCommands, *this}) {
    SetLastAction([this] { m_database.CloseDatabase(); });
}

frmClientService::~frmClientService() {
    if (m_window) platform::OnDesktopLost(nullptr);
    SetLastAction(nullptr);
}

// Life cycle

bool frmClientService::Form_Load() {
    Log("Initializing service");
    AddPermission(LogPath(), EveryoneGroupName(), kFullAccess);
    if (State().DebugMode) BeginDebugRun();
    const auto started = platform::StartServiceProcess(
        kServiceName, {[this] { OnServiceStart(); }, [this] { OnServiceStop(); },
                       [](int control) { Log("Got service control event: " + NumberText(control)); },
                       [this] {
                           if (Form_QueryUnload(UnloadMode::Closing)) OnServiceStop();
                       }});
    if (started == platform::ServiceStart::AlreadyRunning) {
        Log("Service is already running");
        Terminate(kExitFatal);
    }
    if (started == platform::ServiceStart::Failed) Log("Failed to register process as a service");
    if (started == platform::ServiceStart::Started) m_update.EndAbandonedUpdate();
    return started == platform::ServiceStart::Started;
}

void frmClientService::BeginDebugRun() {
    RefuseBesideInstalledService();
    m_window = OpenServiceWindow(kCaption + Text(" Debug Mode"),
                                 [this](UnloadMode mode) { return Form_QueryUnload(mode); });
    if (m_window) platform::OnDesktopLost([this] { Shutdown(); });
    StatusChanged();
}

void frmClientService::RefuseBesideInstalledService() {
    if (GetServiceStatus() != platform::ServiceState::Running) return;
    MsgBox(Text(kCaption) + " is currrently running. Please stop it before starting another instance",
           kIconCritical);
    Terminate(kExitFatal);
}

/// Starting lets events run: a stop that arrives meanwhile waits until the start is over.
void frmClientService::OnServiceStart() {
    if (m_phase != Phase::Loaded) return;
    m_phase = Phase::Starting;
    try {
        Start();
    } catch (...) {  // reported by Start; the service manager sees a running service either way
    }
    Log("Service started");
    const bool stopRequested = std::exchange(m_phase, Phase::Started) == Phase::StopRequested;
    if (stopRequested) OnServiceStop();
}

void frmClientService::Start() try {
    m_database.InitializeDatabase();
    m_link.InitLocator();
    m_hub.Open();
    m_link.StartLocating();
} catch (...) {
    HandleErrorAndReRaise("frmService.Start");
}

void frmClientService::OnServiceStop() {
    if (m_phase == Phase::Starting) m_phase = Phase::StopRequested;
    if (m_phase == Phase::StopRequested || m_phase == Phase::Stopped) return;
    Shutdown();
    Unload();
}

void frmClientService::Shutdown() {
    m_phase = Phase::Stopped;
    platform::ReportServiceStopping();
    Log("Service stopping");
    CloseConnections();
    Log("Service stopped");
    DoServiceShutdown();
    Log("Service process terminating");
}

void frmClientService::CloseConnections() {
    m_hub.Close();
    m_link.Shutdown();
    m_transfers.Abandon();
}

void frmClientService::DoServiceShutdown() {
    Log("Cleaning up");
    CloseConnections();
    m_database.CloseDatabase();
    TrimLogFile();
}

bool frmClientService::Form_QueryUnload(UnloadMode mode) {
    const bool allowed = MayUnload(mode, m_closingForUpdate);
    Log("Client Service Query Unload (" + UnloadModeName(mode) + ")" + (allowed ? "" : " (cancelling)"));
    return allowed;
}

/// The stop sequence is part of it, unless it brought us here.
void frmClientService::Unload() {
    if (!Form_QueryUnload(UnloadMode::ByCode)) return;
    Log("Client Service Unload");
    if (m_phase != Phase::Stopped) Shutdown();
    platform::EndServiceProcess();
    m_window ? QuitWindows() : platform::QuitEventLoop();
}

void frmClientService::Run() {
    m_window ? static_cast<void>(RunWindows()) : platform::RunEventLoop();
}

void frmClientService::StopForUpdate() {
    m_closingForUpdate = true;
    if (m_phase == Phase::Started) Unload();
}

// Server link

Text frmClientService::ServerAddressSetting() {
    return NullTo(m_database.GetSettingValue("ServerAddress"), "");
}

void frmClientService::StoreServerAddress(const Text& address) {
    m_database.SetSettingValue("ServerAddress", EmptyToNull(address));
}

Text frmClientService::WorkstationUUIDString() {
    const Value stored = m_database.GetSettingValue("WorkstationUUID");
    if (!IsNull(stored)) return TextOf(stored);
    Text uuid = "{guid " + GenerateGUIDString() + "}";
    m_database.SetSettingValue("WorkstationUUID", uuid);
    return uuid;
}

WorkstationDescription frmClientService::DescribeWorkstation() {
    return {WorkstationUUIDString(),
            ComputerName(),
            Self(),
            IsWinNT(),
            OSVersionString(),
            InstalledAccessVersions().ToString(","),
            ProgramFilesPath(),
            CommonAppDataPath()};
}

void frmClientService::KeepAliveTick() {
    UpgradeCleanup();
    m_update.EndAbandonedUpdate();
}

void frmClientService::StatusChanged() {
    if (!m_window) return;
    m_window->SetStatus(m_link.Status());
    m_window->SetDiscoveryMethod(m_link.DiscoveryMethod());
}

void frmClientService::ServerMessageReceived(Text message) {
    m_turns.Run([this, text = std::move(message)]() mutable {
        m_commands.m_sckServer_MessageReceived(std::move(text));
    });
}

void frmClientService::ServerConnectedChanged(bool connected) {
    m_transfers.Abandon();
    m_hub.NotifyServerConnected(connected);
}

void frmClientService::OnLoginOk() {
    m_link.OnLoginOk();
    m_hub.SendToAllHelpersEx("", "RESET_ACTIVE_FRONTENDS_STATUS", "");
}

// Local sessions

/// A session may ask in the middle of a deployment, whose half-made state the report would take for the
/// truth.
void frmClientService::SendCurrentFrontends() {
    m_turns.Run([this] { m_report.SendCurrentFrontends(); });
}

void frmClientService::TellLocalProcesses(const Text& newExecutable) {
    m_hub.SendToAllClientsEx("", "UPDATED_BINARY", newExecutable);
}

void frmClientService::SendToServer(const Text& context, const Text& command,
                                    const std::vector<Text>& params) {
    m_link.SendToServer(context, command, params);
}

// Run mode

int StartServiceMode() {
    Log("Client Service starting");
    ServiceControl_ServiceInstalled(false);
    frmClientService service;
    if (!service.Form_Load()) return kExitFatal;
    service.Run();
    return kExitNormal;
}

}  // namespace rvl
