#include "tools/deployserver/start_decisions.h"

#include "util/parameters.h"
#include "util/text_functions.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kUsualText =
    "The administrator has closed this application for the time being.\r\n\r\nPlease try again later.";
constexpr const char* kWarningIcon = "48";

}  // namespace

StartDecisions::StartDecisions(const PeopleOptions& options) {
    for (const std::int32_t id : options.denied)
        Deny(id, options.denialText);
}

/// The answer names helper, front end, title and switchboard as the request does.
bool StartDecisions::Answer(Workstation& workstation, const Message& message) const {
    constexpr std::size_t kParameters = 4;
    if (message.command != "START_FRONTEND" || !message.context.empty()) return false;
    auto params = SplitParameters(message.params);
    if (params.size() < kParameters) return false;
    params.resize(kParameters);
    const auto denied = m_denied.find(ParseLongOr(params[1], 0));
    const bool isDenied = denied != m_denied.end();
    if (isDenied) params.insert(params.end(), {denied->second, kWarningIcon});
    workstation.PrintStep("START_FRONTEND frontend " + params[1] + " \"" + params[2] + "\" for " +
                          workstation.People().UserOf(ParseLongOr(params[0], -1)) +
                          (isDenied ? ": denied" : ": granted"));
    workstation.Send(
        MakeMessage(message.context, isDenied ? "DENY_FRONTEND" : "START_FRONTEND", JoinParameters(params)));
    return true;
}

void StartDecisions::Deny(std::int32_t frontendId, const Text& text) {
    m_denied[frontendId] = text.empty() ? kUsualText : text;
}

bool StartDecisions::Allow(std::int32_t frontendId) {
    return m_denied.erase(frontendId) > 0;
}

}  // namespace rvl::deployserver
