#pragma once

#include <vector>

#include "deploy/server_command_ports.h"
#include "platform/error.h"
#include "util/message.h"
#include "util/parameters.h"

namespace rvl {

/// One command of the deployment server, with the generic ways to answer it. Every answer carries the context
/// of the request.
class ServerRequest {
 public:
    ServerRequest(Message message, ServerReplies& replies);

    const Text& Context() const { return m_message.context; }
    const Text& Command() const { return m_message.command; }
    const Text& RawParameters() const { return m_message.params; }
    const std::vector<Text>& Parameters() const { return m_parameters; }

    void Reply(const Text& command, const std::vector<Text>& params) const;
    void Succeed() const;                                           ///< GENERAL_SUCCESS
    void RefuseAsInvalid() const;                                   ///< GENERAL_ERROR 87 "Invalid parameters"
    void Fail(std::int32_t number, const Text& description) const;  ///< GENERAL_ERROR

 private:
    Message m_message;
    std::vector<Text> m_parameters;
    ServerReplies& m_replies;
};

}  // namespace rvl
