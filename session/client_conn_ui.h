#pragma once

#include "session/local_session.h"
#include "util/long_vector.h"

namespace rvl {

/// Session of a switchboard or of a start-front-end process: its user's list of front ends, whether the
/// server can be reached, and requests to start a front end.
class ClientConnUI : public LocalSession {
 public:
    explicit ClientConnUI(SessionHost& host);

    void OnServerConnect() override;
    void OnServerDisconnect() override;

    void SendFrontendList();

    /// One entry of the list, from a row of DeployedFrontends; a front end that was sent already is left out.
    void AddFrontendEntry(Recordset& row);

    /// Takes the entry away from the peer that was sent it.
    void RemoveFrontendEntry(std::int32_t frontendId);

    bool IsHelperConnected() const;  ///< of the same user

 private:
    std::size_t LoginParameters() const override { return 4; }
    void OnLogin(const std::vector<Text>& login) override;
    bool Dispatch(const Text& context, const Text& command, const Text& params) override;
    void StartFrontend(const Text& context, const std::vector<Text>& params);
    void StartWithoutServer(ClientConnHelper& helper, std::int32_t frontendId, const Text& title);
    void RefuseStart(const Text& text, const Text& title);

    LongVector m_sentFrontends;
    std::uint32_t m_lists = 0;  ///< begun so far
};

}  // namespace rvl
