#pragma once

#include "deploy/local_database.h"
#include "deploy/server_commands.h"
#include "net/file_transfers.h"
#include "net/server_link.h"
#include "session/local_hub.h"

namespace rvl {

/// The service object: composes the parts of the client service and gives them their start and stop order.
class frmClientService : private ServerLink::Owner, private LinkCommands, private ServerReplies {
 public:
    frmClientService();
    ~frmClientService() override;
    frmClientService(const frmClientService&) = delete;
    frmClientService& operator=(const frmClientService&) = delete;

    /// Registers with the service manager, whose start event then starts the service. False when the process
    /// is to end at once.
    bool Form_Load();

 private:
    enum class Phase { Loaded, Starting, StopRequested, Started, Stopped };

    void OnServiceStart();
    void OnServiceStop();
    void Start();  ///< database, broadcast channel, local listener, server link, in this order
    void CloseConnections();
    void DoServiceShutdown();
    void Unload();

    // ServerLink::Owner
    Text ServerAddressSetting() override;
    void StoreServerAddress(const Text& address) override;
    WorkstationDescription DescribeWorkstation() override;
    void ServerMessageReceived(Text message) override;
    void ServerLoggedIn() override {}
    void ServerConnectedChanged(bool connected) override;
    void KeepAliveTick() override {}

    Text WorkstationUUIDString();

    // ServerReplies
    void SendToServer(const Text& context, const Text& command, const std::vector<Text>& params) override;

    // LinkCommands
    void OnHello(const std::vector<Text>& params) override { m_link.OnHello(params); }
    void OnLoginOk() override { m_link.OnLoginOk(); }
    void OnPong() override { m_link.OnPong(); }
    void OnSetServer(const std::vector<Text>& params) override { m_link.OnSetServer(params); }
    void OnFindServerAgain() override { m_link.OnFindServerAgain(); }

    LocalDatabase m_database;
    ServerLink m_link;
    LocalHub m_hub;
    FileTransfers m_transfers;
    ServerCommands m_commands;
    Phase m_phase = Phase::Loaded;
};

/// Logs the start and runs the service until it is stopped. Returns the exit code.
int StartServiceMode();

}  // namespace rvl
