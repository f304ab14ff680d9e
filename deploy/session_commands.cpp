#include "deploy/session_commands.h"

#include "deploy/unavailable_texts.h"
#include "runtime/dialogs.h"
#include "util/text_functions.h"

namespace rvl {

void SessionCommands::Tell(std::int32_t switchboard, const Text& command, const std::vector<Text>& params) {
    if (m_sessions.IsSwitchboard(switchboard))
        m_sessions.SendToClientEx(static_cast<std::int16_t>(switchboard), "", command,
                                  JoinParameters(params));
}

void SessionCommands::FrontendUpdated(const ServerRequest& request) {
    m_sessions.SendToAllClientsEx(request.Context(), "FRONTEND_UPDATED", request.RawParameters());
}

void SessionCommands::CloseFrontend(const ServerRequest& request) {
    const auto& params = request.Parameters();
    const std::int32_t helper = ParseLongOr(params[0], 0);
    if (!m_sessions.HasSession(helper)) return;
    m_sessions.SendToClientEx(static_cast<std::int16_t>(helper), request.Context(), "CLOSE_FRONTEND",
                              JoinParameters({params.begin() + 1, params.begin() + 7}));
}

void SessionCommands::StartFrontend(const ServerRequest& request) {
    const auto& params = request.Parameters();
    const std::int32_t helper = ParseLongOr(params[0], 0);
    const std::int32_t switchboard = ParseLongOr(params[3], 0);
    const Text icon = NumberText(kIconCritical);
    if (!m_sessions.IsHelper(helper)) {
        Tell(switchboard, "START_HELPER", {});
        Tell(switchboard, "MSGBOX", {kTemporarilyUnavailable, params[2], icon});
    } else {
        const Text problem = m_sessions.StartFrontend(helper, ParseLongOr(params[1], 0));
        if (!problem.empty()) Tell(switchboard, "MSGBOX", {CurrentlyUnavailable(problem), params[2], icon});
    }
    Tell(switchboard, "START_FRONTEND_DONE", {});
}

void SessionCommands::DenyFrontend(const ServerRequest& request) {
    const auto& params = request.Parameters();
    const std::int32_t switchboard = ParseLongOr(params[3], 0);
    Tell(switchboard, "MSGBOX", {params[4], params[2], NumberText(ParseLongOr(params[5], 0))});
    Tell(switchboard, "START_FRONTEND_DONE", {});
}

}  // namespace rvl
