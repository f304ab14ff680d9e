#include "session/switchboard.h"

#include <utility>

#include "runtime/log_file.h"
#include "runtime/process_state.h"
#include "session/form_closing.h"
#include "session/service_message_box.h"
#include "session/start_helper.h"
#include "util/handle_error.h"
#include "util/path_text.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr const char* kTitle = "Access Switchboard";
constexpr std::size_t kEntryFields = 11;

std::int32_t IdIn(const std::vector<Text>& params) {
    return ParseLongOr(params[0], 0);
}

/// The icon lies with the other files of the version.
Text IconPathIn(const std::vector<Text>& entry) {
    constexpr std::size_t kLocation = 3, kIconFile = 8;
    return entry[kIconFile].empty() ? Text() : WithTrailingBackslash(entry[kLocation]) + entry[kIconFile];
}

}  // namespace

Switchboard::Switchboard(ServiceConnection& connection, SwitchboardView& view, UpgradeWait startUpgradeWait)
    : m_connection(connection),
      m_view(view),
      m_startUpgradeWait(std::move(startUpgradeWait)),
      m_advanced(connection, view) {
    AddListCommands();
    AddHistoryCommands();
    AddProcessCommands();
}

void Switchboard::AddListCommands() {
    const auto add = [this](const Parameters& params) { AddFrontend(params); };
    m_commands.Add("FRONTEND_LIST_BEGIN", 0, [this](const Parameters&) {
        m_view.ClearFrontends();
        m_advanced.BeginList();
    });
    m_commands.Add("FRONTEND_ENTRY", kEntryFields, add);
    m_commands.Add("FRONTEND_ADD", kEntryFields, add);
    m_commands.Add("FRONTEND_REMOVE", 1, [this](const Parameters& params) {
        m_view.RemoveFrontend(IdIn(params));
        m_advanced.FrontendRemoved(IdIn(params));
    });
    m_commands.Add("FRONTEND_LIST_END", 0, [this](const Parameters&) {
        m_listLoaded = true;
        m_advanced.EndList();
        UpdateCaption();
    });
}

void Switchboard::AddHistoryCommands() {
    m_commands.Add("FRONTEND_VERSION_HISTORY_BEGIN", 0,
                   [this](const Parameters&) { m_advanced.BeginHistory(); });
    m_commands.Add("FRONTEND_VERSION_HISTORY_ENTRY", ClientVerHistoryEntry::kFields,
                   [this](const Parameters& params) { m_advanced.AddHistoryEntry(params); });
    m_commands.Add("FRONTEND_VERSION_HISTORY_END", 0, [this](const Parameters&) { m_advanced.EndHistory(); });
    m_commands.Add("FRONTEND_UPDATED", 1,
                   [this](const Parameters& params) { m_advanced.FrontendUpdated(IdIn(params)); });
}

void Switchboard::AddProcessCommands() {
    m_commands.Add("SERVER_AVAILABLE", 1,
                   [this](const Parameters& params) { UpdateServerConnected(IdIn(params) != 0); });
    m_commands.Add("UPDATED_BINARY", 1, [this](const Parameters& params) { UpdateBinary(params[0]); });
    m_commands.Add("START_HELPER", 0, [](const Parameters&) { StartHelperForService(); });
    m_commands.Add("START_FRONTEND_DONE", 0, [this](const Parameters&) { m_view.SetBusyPointer(false); });
    m_commands.Add("MSGBOX", 0, ShowServiceMessageBox);
}

void Switchboard::Load() try {
    State().ApplicationTitle = kTitle;
    m_view.Show();
    m_view.EnableAdvanced(false);
    UpdateCaption();
    m_connection.Connect(*this);
} catch (...) {
    HandleError("frmClientMain.Form_Load");
}

// The connection

/// Of the server nothing is known without the service, which later tells only of one that can be reached.
void Switchboard::OnConnectionLost() try {
    Log("Connection Lost");
    m_listLoaded = false;
    UpdateServerConnected(false);
    UpdateCaption();
} catch (...) {
    HandleError("frmClientMain.ConnectionLost");
}

void Switchboard::OnMessage(const Text& command, const Parameters& params) try {
    if (command == "GENERAL_ERROR") m_view.SetBusyPointer(false);  // what was asked for does not come
    m_commands.Handle(command, params);
} catch (...) {
    HandleError("frmClientMain.IncomingMessage");
}

void Switchboard::UpdateServerConnected(bool connected) {
    m_view.SetBusyPointer(false);
    if (connected == m_serverConnected) return;
    m_serverConnected = connected;
    Log(Text("Server is ") + (connected ? "connected" : "disconnected"));
    UpdateCaption();
    m_advanced.SetServerConnected(connected);
}

void Switchboard::UpdateCaption() {
    const bool loading = !m_connection.IsConnected() || !m_listLoaded;
    const char* suffix = loading ? " [Loading]" : m_serverConnected ? "" : " [Connecting to server]";
    m_view.SetCaption(Text(kTitle) + suffix);
}

// The front ends

void Switchboard::AddFrontend(const Parameters& entry) {
    m_view.AddFrontend({IdIn(entry), entry[2], entry[7], IconPathIn(entry)});
    m_advanced.FrontendListed(IdIn(entry));
}

void Switchboard::StartFrontend(std::int32_t frontendId, const Text& name) try {
    Log("Asking to start frontend #" + NumberText(frontendId) + " \"" + name + "\"");
    m_connection.SendData("START_FRONTEND", {NumberText(frontendId), name});
} catch (...) {
    HandleError("frmClientMain.StartFrontend");
}

void Switchboard::FrontendChosen(std::int32_t frontendId) try {
    m_advanced.FrontendChosen(frontendId);
} catch (...) {
    HandleError("frmClientMain.LoadAdvanced");
}

void Switchboard::TabChanged() try { m_advanced.TabChanged(); } catch (...) {
    HandleError("frmClientMain.LoadAdvanced");
}

// The end

/// The connection goes first: the service waits for it before it updates, and nothing may arrive, least of
/// all the same order again, while the forms close.
void Switchboard::UpdateBinary(const Text& newExecutable) {
    if (!m_startUpgradeWait(newExecutable)) return;
    m_connection.Close();
    CloseAllForms(m_view);
}

void Switchboard::QueryUnload(UnloadMode mode) try {
    Log("Client UI exiting (" + UnloadModeName(mode) + ")");
    m_connection.Close();
    TrimLogFile();
} catch (...) {
    HandleError("frmClientMain.Form_QueryUnload");
}

}  // namespace rvl
