#include "net/frame_reader.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "tests/support/workstation.h"
#include "util/message.h"

namespace rvl {
namespace {

TEST(FrameReader, FramesArriveInAnyPieces) {
    const std::vector<Text> messages = {"", Text("\0PING\0", 6), Text(300, '\xFF'),
                                        "", Text(70000, 'x'),    "end"};
    Text stream;
    for (const Text& message : messages)
        stream += MakeFrame(message);
    EXPECT_EQ(stream.substr(0, 14), Text("\0\0\0\0\6\0\0\0\0PING\0", 14));
    for (const std::size_t piece : {std::size_t{1}, std::size_t{3}, std::size_t{8192}, stream.size()}) {
        FrameReader reader;
        std::vector<Text> read;
        for (std::size_t at = 0; at < stream.size(); at += piece)
            EXPECT_TRUE(reader.Receive(TextView(stream).substr(at, piece),
                                       [&](Text message) { read.push_back(message); }));
        EXPECT_EQ(read, messages) << piece;
    }
}

TEST(FrameReader, WhatEndsTheConnection) {
    const Text small = MakeFrame("s"), waiting = LongToString(600000) + Text(kInputBufferLimit - 4, 'x');
    const std::tuple<Text, Text, Text> rows[] = {
        // two receipts, and the messages read or "broken"
        {MakeFrame(Text(kInputBufferLimit - 4, 'x')), "", Text(kInputBufferLimit - 4, 'x')},
        {waiting, "", ""},
        {"", waiting + "x", "broken"},
        {waiting, "x", "broken"},
        {small, waiting, "s"},
        {"", small + waiting, "broken"},
        {small, LongToString(-1), "brokens"},
        {"", LongToString(INT32_MIN), "broken"},
        {"\xFF\xFF", "\xFF", ""}};
    for (const auto& [first, second, expected] : rows) {
        test::ClearLog();
        FrameReader reader;
        Text read;
        for (const Text& receipt : {first, second})
            if (!reader.Receive(receipt, [&](const Text& message) { read += message; }))
                read = "broken" + read;
        EXPECT_EQ(read, expected);
        EXPECT_EQ(test::Logged("Input buffer too large, disconnecting"), expected.starts_with("broken"));
    }
}

TEST(FrameReader, AHandlerMayReceiveThrowOrClose) {
    Text order;
    FrameReader reader;
    const FrameReader::Deliver deliver = [&](const Text& message) {
        order += message + "(";
        if (message == "a") reader.Receive(MakeFrame("c") + "\1", deliver);
        if (message == "d") throw Error(5, "Test", "boom");
        if (message == "f") reader.Close();
        order += ")";
    };
    reader.Receive(MakeFrame("a") + MakeFrame("b"), deliver);
    EXPECT_EQ(order, "a()b()c()");  // what arrived inside waits for its turn
    EXPECT_THROW(reader.Receive(Text("\0\0\0d", 4) + MakeFrame("e"), deliver), Error);
    EXPECT_TRUE(reader.Receive(MakeFrame("f") + MakeFrame("g"), deliver));
    EXPECT_TRUE(reader.Receive(Text(kInputBufferLimit + 1, 'x'), deliver));
    EXPECT_EQ(order, "a()b()c()d(e()f()");
}

}  // namespace
}  // namespace rvl
