#include "util/random_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>

namespace rvl {
namespace {

TEST(RandomText, NumbersAreUniformAndRepeatable) {
    SeedRandom(1);
    std::map<std::int32_t, int> hits;
    for (int i = 0; i < 6000; ++i)
        ++hits[RandomBetween(-1, 1)];
    ASSERT_EQ(hits.size(), 3u);
    for (std::int32_t value = -1; value <= 1; ++value)
        EXPECT_NEAR(hits[value], 2000, 250);

    constexpr auto kLow = std::numeric_limits<std::int32_t>::min();
    constexpr auto kHigh = std::numeric_limits<std::int32_t>::max();
    SeedRandom(2);
    const std::int32_t first = RandomBetween(kLow, kHigh);
    SeedRandom(2);
    EXPECT_EQ(RandomBetween(kLow, kHigh), first);
    EXPECT_EQ(RandomBetween(5, 5), 5);
    EXPECT_EQ(RandomBetween(5, 4), 5);
}

TEST(RandomText, NonceClassesAreEquallyLikely) {
    const Text nonce = RandomNonce(9000);
    ASSERT_EQ(nonce.size(), 9000u);
    const auto count = [&](char low, char high) {
        return std::count_if(nonce.begin(), nonce.end(), [=](char c) { return c >= low && c <= high; });
    };
    EXPECT_NEAR(count('0', '9'), 3000, 300);
    EXPECT_NEAR(count('A', 'Z'), 3000, 300);
    EXPECT_NEAR(count('a', 'z'), 3000, 300);
    for (const char end : {'0', '9', 'A', 'Z', 'a', 'z'})
        EXPECT_GT(count(end, end), 0) << end;
}

TEST(RandomText, SecretsDoNotFollowTheSeed) {
    SeedRandom(3);
    const Text nonce = RandomNonce(16), guid = GenerateGUIDString();
    SeedRandom(3);
    EXPECT_NE(RandomNonce(16), nonce);
    EXPECT_NE(GenerateGUIDString(), guid);
    constexpr TextView kForm = "{XXXXXXXX-XXXX-4XXX-VXXX-XXXXXXXXXXXX}";
    ASSERT_EQ(guid.size(), kForm.size());
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const TextView allowed = kForm[i] == 'X'   ? "0123456789ABCDEF"
                                 : kForm[i] == 'V' ? "89AB"
                                                   : kForm.substr(i, 1);
        EXPECT_NE(allowed.find(guid[i]), TextView::npos) << guid << " at " << i;
    }
}

}  // namespace
}  // namespace rvl
