// Addresses and error numbers as texts.

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <utility>

#include "platform/system_message.h"
#include "util/error_text.h"
#include "util/ipv4.h"
#include "util/socket_errors.h"

namespace rvl {
namespace {

using Bytes = std::array<std::uint8_t, 4>;

TEST(Ipv4, DottedTextsAreInNetworkOrder) {
    const struct {
        TextView text;
        Bytes bytes;
    } rows[] = {
        {"127.0.0.1", {127, 0, 0, 1}},
        {"255.255.255.255", {255, 255, 255, 255}},
        {"0.0.0.0", {0, 0, 0, 0}},
        {"192.168.10.200", {192, 168, 10, 200}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ParseDotted(row.text), std::bit_cast<std::uint32_t>(row.bytes)) << row.text;
        EXPECT_EQ(DottedText(std::bit_cast<std::uint32_t>(row.bytes)), row.text);
    }
}

TEST(Ipv4, NothingElseIsAnAddress) {
    for (const TextView text : {"", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1..2.3", " 1.2.3.4", "1.2.3.4 ",
                                "1.2.3.-4", "1.2.3.+4", "01.2.3.4", "0x1.2.3.4", "a.b.c.d", "1.2.3.4a"})
        EXPECT_EQ(ParseDotted(text), std::nullopt) << text;
}

TEST(SocketErrors, EveryNumberHasItsText) {
    constexpr std::pair<int, int> kRanges[] = {{10004, 10004}, {10009, 10009}, {10013, 10014}, {10022, 10022},
                                               {10024, 10024}, {10035, 10071}, {10091, 10093}, {10101, 10108},
                                               {10110, 10112}, {11001, 11007}, {11009, 11018}, {11020, 11029},
                                               {11031, 11031}};
    const auto known = [&](int number) {
        for (const auto& [first, last] : kRanges)
            if (number >= first && number <= last) return true;
        return false;
    };
    for (int number = -1; number <= 12000; ++number)
        EXPECT_EQ(!SocketErrorText(number).empty(), known(number)) << number;
}

TEST(SocketErrors, Texts) {
    const std::pair<int, TextView> rows[] = {
        {10004, "Interrupted system call"}, {10009, "Bad file number"},
        {10013, "Permission denied"},       {10035, "Operation would block"},
        {10048, "Address already in use"},  {10054, "Connection reset by peer"},
        {10060, "Connection timed out"},    {10061, "Connection refused"},
        {10065, "No Route to Host"},        {10093, "Successful WSASTARTUP not yet performed"},
        {11001, "Host not found"},          {11004, "Valid name, no data record of requested type"},
    };
    for (const auto& [number, text] : rows)
        EXPECT_EQ(GetErrorString(number), text);
}

TEST(ErrorText, OtherNumbersAreTheSystems) {
    EXPECT_EQ(GetErrorString(-1), "");
    EXPECT_TRUE(GetErrorString(2).ends_with("."));
    EXPECT_TRUE(platform::SystemMessage(2).starts_with(GetErrorString(2)));
    for (int number = 0; number < 3000; ++number) {
        EXPECT_LE(platform::SystemMessage(number).size(), 255u) << number;
        EXPECT_EQ(GetErrorString(number).find_first_of("\r\n"), Text::npos) << number;
    }
}

}  // namespace
}  // namespace rvl
