#include "app/client_service.h"

#include "app/service_control.h"
#include "platform/event_loop.h"
#include "platform/service_process.h"
#include "runtime/folder_paths.h"
#include "runtime/log_file.h"
#include "runtime/system_information.h"
#include "runtime/terminate.h"
#include "session/access_installations.h"
#include "util/handle_error.h"
#include "util/random_text.h"
#include "util/text_functions.h"

namespace rvl {

frmClientService::frmClientService()
    : m_database({Self(), CommonAppDataPath()}),
      m_link(*this),
      m_transfers([this](const Text& context, const Text& command, const std::vector<Text>& params) {
          SendToServer(context, command, params);
      }),
      m_commands({*this, *this, m_transfers, m_hub}) {
    SetLastAction([this] { m_database.CloseDatabase(); });
}

frmClientService::~frmClientService() {
    SetLastAction(nullptr);
}

// Life cycle

bool frmClientService::Form_Load() {
    Log("Initializing service");
    const auto started = platform::StartServiceProcess(
        {[this] { OnServiceStart(); }, [this] { OnServiceStop(); },
         [](int control) { Log("Got service control event: " + NumberText(control)); }});
    if (started == platform::ServiceStart::AlreadyRunning) {
        Log("Service is already running");
        Terminate(kExitFatal);
    }
    if (started == platform::ServiceStart::Failed) Log("Failed to register process as a service");
    return started == platform::ServiceStart::Started;
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
    m_phase = Phase::Stopped;
    Log("Service stopping");
    CloseConnections();
    Log("Service stopped");
    DoServiceShutdown();
    Log("Service process terminating");
    Unload();
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

void frmClientService::Unload() {
    Log("Client Service Query Unload (Unloaded)");
    Log("Client Service Unload");
    platform::EndServiceProcess();
    platform::QuitEventLoop();
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

void frmClientService::ServerMessageReceived(Text message) {
    m_commands.m_sckServer_MessageReceived(std::move(message));
}

void frmClientService::ServerConnectedChanged(bool) {
    m_transfers.Abandon();
}

void frmClientService::SendToServer(const Text& context, const Text& command,
                                    const std::vector<Text>& params) {
    m_link.SendToServer(context, command, params);
}

// Run mode

int StartServiceMode() {
    Log("Client Service starting");
    frmClientService service;
    if (!service.Form_Load()) return kExitFatal;
    platform::RunEventLoop();
    return kExitNormal;
}

}  // namespace rvl
