#include "tools/deployserver/local_people.h"

#include <algorithm>

#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

bool IsUser(TextView wanted, TextView user) {
    return wanted == "*" || EqualsNoCase(wanted, user);
}

Text SinceStart(const Text& milliseconds) {
    return milliseconds == "0" ? "its start not known" : "started " + milliseconds + " ms ago";
}

Text Quoted(const Text& text) {
    return "\"" + text + "\"";
}

}  // namespace

std::optional<Text> LocalPeople::Take(const Message& message) {
    struct Rule {
        const char* command;
        std::size_t parameters;
        Text (LocalPeople::*take)(const Params&);
    };
    static constexpr Rule kRules[] = {
        {"CONNECT", 6, &LocalPeople::OnConnect},
        {"DISCONNECT", 2, &LocalPeople::OnDisconnect},
        {"FRONTEND_START", 7, &LocalPeople::OnFrontendStart},
        {"FRONTEND_END", 3, &LocalPeople::OnFrontendEnd},
    };
    if (message.context.find('#') != Text::npos) return std::nullopt;
    for (const Rule& rule : kRules) {
        if (message.command != rule.command) continue;
        const Params params = SplitParameters(message.params);
        if (params.size() < rule.parameters) break;
        return message.command + " " + (this->*rule.take)(params);
    }
    return std::nullopt;
}

// Sessions

Text LocalPeople::OnConnect(const Params& params) {
    const auto kind = params[0] == "HELPER" ? SessionKind::Helper : SessionKind::Switchboard;
    m_sessions.insert_or_assign(ParseLongOr(params[1], -1), Session{kind, params[3]});
    return params[0] + " " + params[1] + ": " + params[3] + " " + Quoted(params[4]) + ", logged in " +
           params[2] + " ms ago, local data " + Quoted(params[5]);
}

/// What a helper has reported goes with it: its successor reports anew.
Text LocalPeople::OnDisconnect(const Params& params) {
    const std::int32_t id = ParseLongOr(params[1], -1);
    const Text user = UserOf(id);
    m_sessions.erase(id);
    std::erase_if(m_running, [id](const RunningFrontend& each) { return each.helperId == id; });
    return params[0] + " " + params[1] + ": " + user;
}

Text LocalPeople::UserOf(std::int32_t clientId) const {
    const auto session = m_sessions.find(clientId);
    return session == m_sessions.end() ? "unknown user" : session->second.user;
}

bool LocalPeople::Knows(TextView user) const {
    return std::any_of(m_sessions.begin(), m_sessions.end(),
                       [&](const auto& each) { return IsUser(user, each.second.user); });
}

std::vector<std::int32_t> LocalPeople::SessionsOf(TextView user, SessionKind kind) const {
    std::vector<std::int32_t> found;
    for (const auto& [id, session] : m_sessions)
        if (session.kind == kind && IsUser(user, session.user)) found.push_back(id);
    return found;
}

// Front ends

Text LocalPeople::OnFrontendStart(const Params& params) {
    const std::int32_t helper = ParseLongOr(params[0], -1);
    TakeAway(helper, params[2]);
    m_running.push_back({helper, ParseLongOr(params[1], 0), params[2], params[5]});
    return "frontend " + params[1] + " version " + params[6] + " of " + UserOf(helper) + ": window " +
           params[2] + ", " + SinceStart(params[3]) + ", Access " + params[4] + ", " + Quoted(params[5]);
}

/// Its id is that of the start report: at its end the helper may know less of it than the service found out.
Text LocalPeople::OnFrontendEnd(const Params& params) {
    const std::int32_t helper = ParseLongOr(params[0], -1);
    const RunningFrontend ended = TakeAway(helper, params[2]);
    const Text id = ended.frontendId == 0 ? params[1] : NumberText(ended.frontendId);
    return "frontend " + id + " of " + UserOf(helper) + ": window " + params[2] +
           (ended.path.empty() ? Text() : ", " + Quoted(ended.path));
}

RunningFrontend LocalPeople::TakeAway(std::int32_t helperId, const Text& window) {
    const auto found = std::find_if(m_running.begin(), m_running.end(), [&](const RunningFrontend& each) {
        return each.helperId == helperId && each.window == window;
    });
    if (found == m_running.end()) return {};
    RunningFrontend taken = *found;
    m_running.erase(found);
    return taken;
}

std::vector<RunningFrontend> LocalPeople::RunningOf(TextView user, std::int32_t frontendId) const {
    std::vector<RunningFrontend> found;
    for (const RunningFrontend& each : m_running)
        if (each.frontendId == frontendId && IsUser(user, UserOf(each.helperId))) found.push_back(each);
    return found;
}

}  // namespace rvl::deployserver
