#include "deploy/server_request.h"

#include <utility>

#include "util/text_functions.h"

namespace rvl {

ServerRequest::ServerRequest(Message message, ServerReplies& replies)
    : m_message(std::move(message)), m_parameters(SplitParameters(m_message.params)), m_replies(replies) {}

void ServerRequest::Reply(const Text& command, const std::vector<Text>& params) const {
    m_replies.SendToServer(Context(), command, params);
}

void ServerRequest::Succeed() const {
    Reply("GENERAL_SUCCESS", {Command(), RawParameters()});
}

void ServerRequest::RefuseAsInvalid() const {
    constexpr std::int32_t kInvalidParameter = 87;
    Fail(kInvalidParameter, "Invalid parameters");
}

void ServerRequest::Fail(std::int32_t number, const Text& description) const {
    Reply("GENERAL_ERROR", {NumberText(number), description, Command(), RawParameters()});
}

}  // namespace rvl
