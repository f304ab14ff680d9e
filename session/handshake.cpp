#include "session/handshake.h"

#include "util/parameters.h"

namespace rvl {
namespace {

Handshake Reject(Text reason) {
    return {Handshake::RemoteType::None, std::move(reason)};
}

}  // namespace

Handshake ReadHandshake(const Message& message) {
    if (message.command != "HELLO") return Reject("Invalid initial command: " + message.command);
    const auto params = SplitParameters(message.params);
    if (params.size() < 3) return Reject("Invalid handshake");
    if (params[0] != "RVL") return Reject("Invalid protocol: " + params[0]);
    if (params[2].empty()) return Reject("Invalid version");
    if (params[1] == "UI") return {Handshake::RemoteType::UI, ""};
    if (params[1] == "HELPER") return {Handshake::RemoteType::Helper, ""};
    return Reject("Invalid remote type: " + params[1]);
}

}  // namespace rvl
