#include "session/client_conn_ui.h"

#include "deploy/unavailable_texts.h"
#include "runtime/dialogs.h"
#include "session/client_conn_helper.h"
#include "util/handle_error.h"
#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

/// The newest version of each front end, whoever has it: somebody who has only an older one sees none.
constexpr const char* kListQuery =
    "SELECT * From DeployedFrontends WHERE FrontendVersionID IN (SELECT "
    "Max(DeployedFrontends.FrontendVersionID)"
    " AS MaxOfFrontendVersionID FROM DeployedFrontends GROUP BY DeployedFrontends.FrontendID) AND Username "
    "= ";

constexpr const char* kEntryFields[] = {
    "FrontendID",       "Username",        "FrontendName",      "FrontendLocation",
    "FrontendFilename", "MDWPath",         "FrontendVersionID", "FriendlyVersionNumber",
    "IconFile",         "DesktopIconPath", "MenuIconPath"};

}  // namespace

ClientConnUI::ClientConnUI(SessionHost& host) : LocalSession(host, {"UI", "Client UI", "ClientConnUI"}) {}

bool ClientConnUI::IsHelperConnected() const {
    return Host().FindHelperByUsername(Username()) != nullptr;
}

void ClientConnUI::OnLogin(const std::vector<Text>&) {
    // Should the link come up while the first message is sent, that tells this session, too.
    const bool connected = Host().IsServerConnected();
    if (!IsHelperConnected()) SendData("", "START_HELPER", {});
    if (connected && Host().IsServerConnected())
        OnServerConnect();
    else
        SendFrontendList();
    if (!IsHelperConnected()) Host().SendCurrentFrontends();
}

void ClientConnUI::OnServerConnect() {
    SendData("", "SERVER_AVAILABLE", {"1"});
    SendFrontendList();
    SendConnect();
}

void ClientConnUI::OnServerDisconnect() {
    SendData("", "SERVER_AVAILABLE", {"0"});
}

bool ClientConnUI::Dispatch(const Text& context, const Text& command, const Text& params) {
    if (command != "START_FRONTEND") return false;
    StartFrontend(context, SplitParameters(params));
    return true;
}

// The list

void ClientConnUI::SendFrontendList() try {
    const std::uint32_t list = ++m_lists;
    const auto rows = Host().Database().OpenRecordset(kListQuery + QuoteSQLString(Username()));
    m_sentFrontends.Clear();
    SendData("", "FRONTEND_LIST_BEGIN", {});
    // A newer list may have been sent meanwhile: the peer has it whole.
    for (; list == m_lists && !rows->IsEOF(); rows->MoveNext())
        AddFrontendEntry(*rows);
    if (list == m_lists) SendData("", "FRONTEND_LIST_END", {});
} catch (...) {
    HandleErrorAndReRaise("ClientConnUI.SendFrontendList");
}

void ClientConnUI::AddFrontendEntry(Recordset& row) {
    const auto frontendId = static_cast<std::int32_t>(NullTo(row.Field("FrontendID"), 0));
    if (m_sentFrontends.Contains(frontendId)) return;
    std::vector<Text> fields;
    for (const char* field : kEntryFields)
        fields.push_back(NullTo(row.Field(field), ""));
    m_sentFrontends.Add(frontendId, false);
    SendData("", "FRONTEND_ENTRY", fields);
}

void ClientConnUI::RemoveFrontendEntry(std::int32_t frontendId) {
    if (!m_sentFrontends.Contains(frontendId)) return;
    m_sentFrontends.RemoveLong(frontendId);
    SendData("", "FRONTEND_REMOVE", {NumberText(frontendId)});
}

// Starting a front end

void ClientConnUI::StartFrontend(const Text& context, const std::vector<Text>& params) {
    const std::int32_t frontendId = params.empty() ? 0 : ParseLongOr(params[0], 0);
    if (frontendId <= 0) return Close(context, "Invalid START_FRONTEND");
    const Text title = params.size() > 1 ? params[1] : "Microsoft Access";
    const auto helper = Host().FindHelperByUsername(Username());
    if (!helper) {
        SendData("", "START_HELPER", {});
        RefuseStart(kTemporarilyUnavailable, title);
    } else if (Host().IsServerConnected()) {
        Host().SendToServer(
            "", "START_FRONTEND",
            {NumberText(helper->ClientID()), NumberText(frontendId), title, NumberText(ClientID())});
    } else {
        StartWithoutServer(*helper, frontendId, title);
    }
}

void ClientConnUI::StartWithoutServer(ClientConnHelper& helper, std::int32_t frontendId, const Text& title) {
    const Text problem = helper.StartFrontend(frontendId);
    if (problem.empty()) return SendData("", "START_FRONTEND_DONE", {});
    RefuseStart(CurrentlyUnavailable(problem), title);
}

void ClientConnUI::RefuseStart(const Text& text, const Text& title) {
    SendData("", "MSGBOX", {text, title, NumberText(kIconCritical)});
    SendData("", "START_FRONTEND_DONE", {});
}

}  // namespace rvl
