#pragma once

#include <utility>
#include <vector>

#include "session/session_host.h"

namespace rvl {

/// What switchboard and helper sessions have in common: a login before anything else, and a server that is
/// told of it while the link is up, and again when the session is released.
class LocalSession : public ClientConn {
 public:
    ~LocalSession() override;
    LocalSession(const LocalSession&) = delete;
    LocalSession& operator=(const LocalSession&) = delete;

    void Init(std::int16_t clientId) override { m_clientId = clientId; }
    void IncomingMessage(const Text& context, const Text& command, const Text& params) override;
    Text Username() const override { return m_username; }
    std::uint64_t ConnectedTick() const override { return m_connectedTick; }

    std::int16_t ClientID() const { return m_clientId; }
    void SendData(const Text& context, const Text& command, const std::vector<Text>& params);

 protected:
    struct Names {
        Text remoteType;  ///< the word of HELLO: "UI", "HELPER"
        Text inLog;       ///< "Client UI"
        Text ofClass;     ///< under which errors are reported
    };

    LocalSession(SessionHost& host, Names names) : m_host(host), m_names(std::move(names)) {}

    SessionHost& Host() const { return m_host; }
    Text LogPrefix() const { return m_host.ClientIDString(m_clientId) + ": "; }
    void Close(const Text& context, const Text& reason);
    void SendConnect() const;  ///< tells the server of this session

 private:
    using Parameters = std::vector<Text>;

    /// How many parameters a LOGIN has: proof, user name, display name, local application data, ...
    virtual std::size_t LoginParameters() const = 0;
    virtual void OnLogin(const Parameters& login) = 0;
    virtual bool Dispatch(const Text& context, const Text& command, const Text& params) = 0;

    void LogIn(const Text& context, const Parameters& params);
    bool IsProven(const Parameters& params) const;

    SessionHost& m_host;
    const Names m_names;
    std::int16_t m_clientId = -1;
    bool m_loggedIn = false;
    std::uint64_t m_connectedTick = 0;
    Text m_username;
    Text m_displayName;
    Text m_localAppDataPath;
};

}  // namespace rvl
