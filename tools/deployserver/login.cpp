#include "tools/deployserver/login.h"

#include "util/digest.h"
#include "util/parameters.h"

namespace rvl::deployserver {

std::optional<Login> ParseLogin(TextView params) {
    constexpr std::size_t kParameters = 11;
    const auto list = SplitParameters(params);
    if (list.size() < kParameters) return std::nullopt;
    return Login{list[0], list[1], list[2], list[3], list[9], list[10]};
}

bool IsProofRight(const Login& login, const Text& token) {
    constexpr std::size_t kChecksumSize = 16, kProofSize = 32;
    constexpr char kSeparator = '\0';
    if (login.proof.size() != kProofSize) return false;
    const Text nonce = login.proof.substr(kChecksumSize);
    const Text expected = GenerateRVLChecksum(login.uuid + kSeparator + login.computer + kSeparator +
                                              login.domain + kSeparator + token + nonce);
    return login.proof.substr(0, kChecksumSize) == expected;
}

}  // namespace rvl::deployserver
