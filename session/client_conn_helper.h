#pragma once

#include "session/local_session.h"

namespace rvl {

/// Session of the helper on a user's desktop: its user's folders, its reports of running front ends, and the
/// orders to start one.
class ClientConnHelper : public LocalSession {
 public:
    explicit ClientConnHelper(SessionHost& host);

    void OnServerConnect() override;
    void OnServerDisconnect() override;

    /// Orders the start of the newest version of a front end that its user has. The result is empty, or what
    /// the user is to be told when it cannot be started.
    Text StartFrontend(std::int32_t frontendId);

    /// Tells the user of a version that was deployed, if it was deployed to this user.
    void AnnounceVersion(std::int32_t frontendVersionId);
    void MaybeShowNewVersionMessage(std::int32_t frontendId, const Text& frontendName);

 private:
    std::size_t LoginParameters() const override { return 6; }
    void OnLogin(const std::vector<Text>& login) override;
    bool Dispatch(const Text& context, const Text& command, const Text& params) override;
    void KillOldHelpers();
    void OnFrontendStart(const Text& context, std::vector<Text> params);
    void CompleteFrontendStart(std::vector<Text>& params);

    /// Forwards a report to the server, with the client id before its parameters.
    void Forward(const Text& context, const Text& command, std::vector<Text> params);
};

}  // namespace rvl
