#include "session/client_conn_helper.h"

#include "net/yield.h"
#include "runtime/log_file.h"
#include "session/frontend_start.h"
#include "session/user_paths.h"
#include "util/handle_error.h"
#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl {

ClientConnHelper::ClientConnHelper(SessionHost& host)
    : LocalSession(host, {"HELPER", "Client Helper", "ClientConnHelper"}) {}

// Login

void ClientConnHelper::OnLogin(const std::vector<Text>& login) {
    KillOldHelpers();
    RecordUserPaths(Host().Database(), Username(), {login[3], login[4], login[5]});
    if (!Host().IsServerConnected()) return;
    OnServerConnect();
    Host().SendCurrentFrontends();
}

/// The newest helper of a user wins: an older one may belong to a session that hangs.
void ClientConnHelper::KillOldHelpers() {
    for (std::int16_t id = 0; id <= Host().MaxClientID(); ++id) {
        const auto other = std::dynamic_pointer_cast<ClientConnHelper>(Host().ClientSession(id));
        if (!other || other.get() == this || other->Username() != Username()) continue;
        other->SendData("", "TERMINATE", {"Duplicate helper username"});
        YieldToPendingEvents();
        if (Host().ClientSession(id) == other)
            other->Close("", "Old helper with duplicate username (" + Username() + ")");
    }
}

void ClientConnHelper::OnServerConnect() {
    SendConnect();
}

void ClientConnHelper::OnServerDisconnect() {
    SendData("", "SERVER_AVAILABLE", {"0"});
}

// Reports of running front ends

bool ClientConnHelper::Dispatch(const Text& context, const Text& command, const Text& params) {
    if (command == "FRONTEND_START")
        OnFrontendStart(context, SplitParameters(params));
    else if (command == "FRONTEND_END")
        Forward(context, command, {params});
    else
        return false;
    return true;
}

void ClientConnHelper::OnFrontendStart(const Text& context, std::vector<Text> params) {
    constexpr std::size_t kParameters = 6;
    if (params.size() < kParameters) return Close(context, "Invalid login");
    params.resize(kParameters);
    if (ParseLongOr(params[0], 0) == 0 || ParseLongOr(params[5], 0) == 0) CompleteFrontendStart(params);
    Forward(context, "FRONTEND_START", std::move(params));
}

/// A database that was opened without its shortcut carries no ids; where it lies tells what it is.
void ClientConnHelper::CompleteFrontendStart(std::vector<Text>& params) {
    const auto row = Host().Database().OpenRecordset(
        "Select * From DeployedFrontends Where FrontendLocation+FrontendFilename = " +
        QuoteSQLString(params[4]));
    if (row->IsEOF()) return;
    Log(LogPrefix() + "Helper sent us incomplete data, I worked out what it should be.");
    params[0] = NumberText(NullTo(row->Field("FrontendID"), 0));
    params[5] = NumberText(NullTo(row->Field("FrontendVersionID"), 0));
}

void ClientConnHelper::Forward(const Text& context, const Text& command, std::vector<Text> params) {
    params.insert(params.begin(), NumberText(ClientID()));
    Host().SendToServer(context, command, params);
}

// Orders

Text ClientConnHelper::StartFrontend(std::int32_t frontendId) try {
    Log("Asking helper #" + NumberText(ClientID()) + " to start frontend #" + NumberText(frontendId));
    const StartDecision decision = DecideStart(Host().Database(), Username(), frontendId);
    if (decision.problem.empty()) SendData("", "START_FRONTEND", decision.order);
    return decision.problem;
} catch (...) {
    HandleErrorAndReRaise("ClientConnHelper.StartFrontend");
}

void ClientConnHelper::AnnounceVersion(std::int32_t frontendVersionId) {
    const auto row = Host().Database().OpenRecordset(
        "SELECT FrontendID, FrontendName FROM DeployedFrontends WHERE FrontendVersionID = " +
        NumberText(frontendVersionId) + " AND Username = " + QuoteSQLString(Username()));
    if (row->IsEOF()) return;
    MaybeShowNewVersionMessage(static_cast<std::int32_t>(NullTo(row->Field("FrontendID"), 0)),
                               NullTo(row->Field("FrontendName"), ""));
}

void ClientConnHelper::MaybeShowNewVersionMessage(std::int32_t frontendId, const Text& frontendName) {
    SendData("", "NEW_VERSION", {NumberText(frontendId), frontendName});
}

}  // namespace rvl
