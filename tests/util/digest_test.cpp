#include "util/digest.h"

#include <gtest/gtest.h>

#include <set>

namespace rvl {
namespace {

TEST(Digest, KnownSums) {
    EXPECT_EQ(MD5SumAsHex(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(MD5SumAsHex("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(MD5SumAsHex(TextView("\0\xFF", 2)), "d07d34efac6328007ad67c7e0a985e00");
}

TEST(Digest, PiecesGiveTheSameSum) {
    const Text text(4096 * 3 + 1, '\xE4');
    MessageDigest digest;
    digest.AddText("forgotten");
    digest.Finish();
    digest.Reset();
    EXPECT_EQ(digest.AsHex(), "");
    for (std::size_t at = 0; at < text.size(); at += 4096)
        digest.AddText(TextView(text).substr(at, 4096));
    digest.AddBytes(nullptr, 0);
    digest.Finish();
    EXPECT_EQ(digest.AsHex(), MD5SumAsHex(text));
}

TEST(Digest, ChecksumIsBothEndsOfTheSaltedSum) {
    const Text sum = MD5SumAsHex("uTc8NqX2tokenKw73PbeZ");
    EXPECT_EQ(GenerateRVLChecksum("token"), sum.substr(0, 8) + sum.substr(24));
    const std::set<Text> different{GenerateRVLChecksum(""), GenerateRVLChecksum("token"),
                                   GenerateRVLChecksum("Token"), GenerateRVLChecksum(TextView("token\0", 6))};
    EXPECT_EQ(different.size(), 4u);
    for (const Text& checksum : different)
        EXPECT_EQ(checksum.size(), 16u);
}

}  // namespace
}  // namespace rvl
