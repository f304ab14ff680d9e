#pragma once

#include "app/maintenance.h"
#include "app/self_update.h"
#include "app/upgrade_cleanup.h"
#include "deploy/frontend_report.h"
#include "deploy/local_database.h"
#include "deploy/server_commands.h"
#include "net/file_transfers.h"
#include "net/server_link.h"
#include "runtime/unload_mode.h"
#include "session/local_hub.h"
#include "session/service_view.h"
#include "util/one_at_a_time.h"

namespace rvl {

/// The service object: composes the parts of the client service and gives them their start and stop order.
class frmClientService : private ServerLink::Owner,
                         private LocalHub::Service,
                         private LinkCommands,
                         private UpdateCommands,
                         private SelfUpdate::Host,
                         private ServerReplies {
 public:
    frmClientService();
    ~frmClientService() override;
    frmClientService(const frmClientService&) = delete;
    frmClientService& operator=(const frmClientService&) = delete;

    /// Registers with the service manager, whose start event then starts the service. False when the process
    /// is to end at once.
    bool Form_Load();

    /// Serves until it is unloaded.
    void Run();

 private:
    enum class Phase { Loaded, Starting, StopRequested, Started, Stopped };

    void BeginDebugRun();
    void RefuseBesideInstalledService();  ///< a debug run takes nothing away from the real one
    void OnServiceStart();
    void OnServiceStop();
    void Start();  ///< database, broadcast channel, local listener, server link, in this order
    void Shutdown();
    void CloseConnections();
    void DoServiceShutdown();
    bool Form_QueryUnload(UnloadMode mode);
    void Unload();

    // ServerLink::Owner
    Text ServerAddressSetting() override;
    void StoreServerAddress(const Text& address) override;
    WorkstationDescription DescribeWorkstation() override;
    void ServerMessageReceived(Text message) override;
    void ServerLoggedIn() override { m_report.SendCurrentFrontends(); }
    void ServerConnectedChanged(bool connected) override;
    void KeepAliveTick() override;
    void StatusChanged() override;

    Text WorkstationUUIDString();

    // ServerReplies and LocalHub::Service
    void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) override;

    // LocalHub::Service
    bool IsServerConnected() const override { return m_link.IsServerConnected(); }
    void SendCurrentFrontends() override;
    Text PendingUpdatePath() const override { return m_update.PendingPath(); }
    void MaybeUpgradeNow() override { m_update.MaybeUpgradeNow(); }
    LocalDatabase& Database() override { return m_database; }

    // UpdateCommands
    void OnUpdatedBinary(const Text& path) override { m_update.Accept(path); }

    // SelfUpdate::Host
    int ConnectedClients() const override { return m_hub.ConnectedClients(); }
    void TellLocalProcesses(const Text& newExecutable) override;
    void StopForUpdate() override;

    // LinkCommands
    void OnHello(const std::vector<Text>& params) override { m_link.OnHello(params); }
    void OnLoginOk() override;
    void OnPong() override { m_link.OnPong(); }
    void OnSetServer(const std::vector<Text>& params) override { m_link.OnSetServer(params); }
    void OnFindServerAgain() override { m_link.OnFindServerAgain(); }

    LocalDatabase m_database;
    ServerLink m_link;
    SelfUpdate m_update;
    LocalHub m_hub;
    FileTransfers m_transfers;
    FrontendRegistration m_registration;
    FrontendRemoval m_removal;
    FrontendDeployment m_deployment;
    FrontendReport m_report;
    FrontendCommands m_frontendCommands;
    ServerCommands m_commands;
    OneAtATime m_turns;  ///< the server's messages, and reports that local sessions ask for
    Maintenance m_maintenance;
    Phase m_phase = Phase::Loaded;
    bool m_closingForUpdate = false;
    std::unique_ptr<ServiceView> m_window;  ///< of a debug run on a display
};

/// Logs the start and runs the service until it is stopped. Returns the exit code.
int StartServiceMode();

}  // namespace rvl
