#include "tools/deployserver/silent_commands.h"

#include "util/parameters.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kMarkerContext = "MARKER";
constexpr const char* kFolder = "C:\\";  // no file, hence no digest to take: the cheapest of all answers

}  // namespace

/// Without a context, so that every error comes without one: some do in any case.
void SilentCommands::Send(const Text& command, const std::vector<Text>& params) {
    m_sent = true;
    m_workstation.Send(MakeMessage("", command, JoinParameters(params)));
}

void SilentCommands::SendMarker() {
    m_workstation.Send(MakeMessage(kMarkerContext, "GET_FILE_MD5", kFolder));
}

SilentCommands::Taken SilentCommands::Take(const Message& message) {
    if (message.context == kMarkerContext) return Taken::AllHandled;
    if (!message.context.empty() || message.command != "GENERAL_ERROR") return Taken::Nothing;
    ++m_errors;
    m_workstation.PrintOutcome("GENERAL_ERROR " + message.params);
    return Taken::Error;
}

void SilentCommands::Reset() {
    m_sent = false;
    m_errors = 0;
}

}  // namespace rvl::deployserver
