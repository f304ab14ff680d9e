#pragma once

#include <cstdint>
#include <vector>

#include "runtime/unload_mode.h"
#include "session/advanced_tab.h"
#include "session/service_commands.h"
#include "session/service_connection.h"
#include "session/switchboard_view.h"
#include "session/upgrade_wait.h"

namespace rvl {

/// The window that lists a user's front ends and starts them (frmClientMain). Connection and view outlive it,
/// and it outlives the closing of its window: a message may be what closes that.
class Switchboard : private ConnectionOwner {
 public:
    Switchboard(ServiceConnection& connection, SwitchboardView& view, UpgradeWait startUpgradeWait);

    void Load();

    // What the user does
    void StartFrontend(std::int32_t frontendId, const Text& name);
    void FrontendChosen(std::int32_t frontendId);  ///< on the advanced tab
    void TabChanged();

    /// The window closes; nothing is shown in it any more.
    void QueryUnload(UnloadMode mode);

 private:
    using Parameters = std::vector<Text>;

    void OnConnectionLost() override;
    void OnMessage(const Text& command, const Parameters& params) override;

    void AddListCommands();
    void AddHistoryCommands();
    void AddProcessCommands();

    void AddFrontend(const Parameters& entry);
    void UpdateBinary(const Text& newExecutable);
    void UpdateServerConnected(bool connected);
    void UpdateCaption();

    ServiceConnection& m_connection;
    SwitchboardView& m_view;
    const UpgradeWait m_startUpgradeWait;
    AdvancedTab m_advanced;
    ServiceCommands m_commands;
    bool m_listLoaded = false;  ///< since the connection came up
    bool m_serverConnected = false;
};

}  // namespace rvl
