#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "util/message.h"

namespace rvl::deployserver {

enum class SessionKind { Helper, Switchboard };

/// A front end that is open on somebody's desktop.
struct RunningFrontend {
    std::int32_t helperId = 0;
    std::int32_t frontendId = 0;  ///< 0: a database that is not deployed
    Text window;                  ///< handle, as it was reported
    Text path;                    ///< of the open database
};

/// Who is logged in at one workstation and what runs there, as far as its service has told. Users are
/// compared without regard to case; the user "*" stands for all.
class LocalPeople {
 public:
    /// Takes a message about people and returns the line that tells it; none for any other message, one
    /// without all its parameters and one that a local process passes through.
    std::optional<Text> Take(const Message& message);

    Text UserOf(std::int32_t clientId) const;
    bool Knows(TextView user) const;
    std::vector<std::int32_t> SessionsOf(TextView user, SessionKind kind) const;
    std::vector<RunningFrontend> RunningOf(TextView user, std::int32_t frontendId) const;

 private:
    struct Session {
        SessionKind kind;
        Text user;
    };
    using Params = std::vector<Text>;

    Text OnConnect(const Params& params);
    Text OnDisconnect(const Params& params);
    Text OnFrontendStart(const Params& params);
    Text OnFrontendEnd(const Params& params);
    RunningFrontend TakeAway(std::int32_t helperId, const Text& window);

    std::map<std::int32_t, Session> m_sessions;  ///< by client id
    std::vector<RunningFrontend> m_running;
};

}  // namespace rvl::deployserver
