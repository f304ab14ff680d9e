#include "util/random_text.h"

#include <limits>
#include <random>

#include "platform/process.h"
#include "util/handle_error.h"

namespace rvl {
namespace {

/// The system's random source in the form the distributions want.
struct SystemGenerator {
    using result_type = std::uint64_t;
    static constexpr result_type min() { return 0; }
    static constexpr result_type max() { return std::numeric_limits<result_type>::max(); }
    result_type operator()() const { return platform::SystemRandom(); }
};

std::mt19937_64& Generator() {
    static std::mt19937_64 generator{platform::SystemRandom()};
    return generator;
}

char RandomOf(TextView characters) {
    SystemGenerator generator;
    return characters[std::uniform_int_distribution<std::size_t>(0, characters.size() - 1)(generator)];
}

char NonceCharacter() {
    switch (RandomOf("dul")) {
        case 'd':
            return RandomOf("0123456789");
        case 'u':
            return RandomOf("ABCDEFGHIJKLMNOPQRSTUVWXYZ");
        default:
            return RandomOf("abcdefghijklmnopqrstuvwxyz");
    }
}

}  // namespace

void SeedRandom(std::uint64_t seed) {
    Generator().seed(seed);
}

std::int32_t RandomBetween(std::int32_t low, std::int32_t high) {
    if (low >= high) return low;
    return std::uniform_int_distribution<std::int32_t>(low, high)(Generator());
}

Text RandomNonce(std::size_t length) {
    Text nonce;
    for (std::size_t i = 0; i < length; ++i)
        nonce += NonceCharacter();
    return nonce;
}

Text GenerateGUIDString() try {
    constexpr TextView kForm = "{XXXXXXXX-XXXX-4XXX-VXXX-XXXXXXXXXXXX}";  // 4: made of random numbers
    Text guid(kForm);
    for (char& character : guid) {
        if (character == 'X') character = RandomOf("0123456789ABCDEF");
        if (character == 'V') character = RandomOf("89AB");
    }
    return guid;
} catch (...) {
    HandleError("Util.GenerateGUIDString");
    return {};
}

}  // namespace rvl
