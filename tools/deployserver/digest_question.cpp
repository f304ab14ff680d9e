#include "tools/deployserver/digest_question.h"

#include "platform/error.h"
#include "util/parameters.h"

namespace rvl::deployserver {
namespace {

constexpr const char* kContext = "FILE_DIGEST";

}  // namespace

void AskDigest(Workstation& workstation, const Text& path) {
    workstation.Send(MakeMessage(kContext, "GET_FILE_MD5", path));
}

bool IsDigestAnswer(const Message& message) {
    return message.context == kContext;
}

Text DigestOf(const Message& answer) {
    if (answer.command != "FILE_MD5") RaiseUnexpected(answer);
    const auto params = SplitParameters(answer.params);
    return params.size() > 1 ? params[1] : Text();
}

void RaiseUnexpected(const Message& message) {
    throw Error(kApplicationErrorBase + 1, "DeployServer",
                "unexpected answer " + message.command + "|" + message.params);
}

}  // namespace rvl::deployserver
