#include "net/file_transfers.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/loopback.h"
#include "util/parameters.h"

namespace rvl {
namespace {

using test::DriveC;
using test::Logged;
using test::NumberedBytes;

class TransferTest : public testing::Test {
 protected:
    TransferTest() { test::ClearLog(); }
    ~TransferTest() override { test::EmptyDriveC(); }

    /// What is sent in answer.
    Text Begin(const Text& path, const Text& size, const Text& resume, const Text& context = "ctx") {
        transfers.Begin(context, JoinParameters({path, size, resume}));
        return std::exchange(sent, {});
    }
    Text Data(TextView content) {
        transfers.Continue("FILE_DATA", content);
        return std::exchange(sent, {});
    }

    Text sent;
    FileTransfers transfers{
        [this](const Text& context, const Text& command, const std::vector<Text>& params) {
            sent += context + ":" + command + ":" + (params.empty() ? "" : params.at(0));
        }};
};

TEST_F(TransferTest, WhatIsThereDecidesWhereItBegins) {
    const std::tuple<int, Text, Text, Text, Text> rows[] = {
        // length there, announced, resume, answer, log
        {-1, "1000", "1", "BEGIN_OK:0", "Beginning file transfer"},
        {400, "1000", "yes", "BEGIN_OK:400", "Resuming file at position: 400"},
        {400, "1000", "0", "BEGIN_OK:0", "Beginning file transfer"},
        {1000, "1000", "1", "COMPLETE:", "Already have complete file"},
        {1001, "1000", "1", "BEGIN_OK:0",
         "Beginning file transfer (overwriting larger local file (1000 vs 1001))"},
        {-1, "0", "1", "COMPLETE:", "Beginning file transfer"},
        {5, "8000000000", "1", "BEGIN_OK:5", "Resuming file at position: 5"}};
    for (const auto& [there, size, resume, answer, log] : rows) {
        test::EmptyDriveC();
        test::ClearLog();
        if (there >= 0)
            test::WriteHostFile(DriveC() + "/New/F", NumberedBytes(static_cast<std::size_t>(there)));
        EXPECT_EQ(Begin("C:\\New\\F", size, resume), "ctx:FILE_" + answer) << there;
        EXPECT_TRUE(Logged("Incoming file transfer for \"C:\\New\\F\" (" + size + " bytes)") && Logged(log))
            << log;
        const bool complete = answer == "COMPLETE:";
        EXPECT_TRUE(Logged("Download complete") == complete && transfers.IsActive("ctx") != complete);
        transfers.Abandon();
        const bool kept = log[0] == 'R' || log[0] == 'A';
        EXPECT_TRUE(test::ReadHostFile(DriveC() + "/New/F") ==
                    NumberedBytes(kept ? static_cast<std::size_t>(there) : 0));
    }
}

TEST_F(TransferTest, ContentArrivesInPiecesAndResumes) {
    const Text content = NumberedBytes(10000), other = "Cannot accept more than one file at once";
    Begin("C:\\file", "10000", "1");
    EXPECT_EQ(Data(TextView(content).substr(0, 4001)), "ctx:FILE_MORE:4001");
    EXPECT_EQ(Data(""), "ctx:FILE_MORE:4001");
    transfers.Abandon();  // the link is lost
    EXPECT_EQ(Begin("c:/FILE", "10000", "1", "again"), "again:FILE_BEGIN_OK:4001");
    EXPECT_EQ(Begin("C:\\x", "5", "1", "other"), "other:ERROR:" + other);
    EXPECT_TRUE(transfers.IsActive("again") && !transfers.IsActive("other") && Logged(other));
    transfers.Continue("PONG", "x");
    EXPECT_TRUE(sent.empty() && Logged("Unexpected file transfer message: PONG"));
    EXPECT_EQ(Data(TextView(content).substr(4001)), "again:FILE_COMPLETE:");
    EXPECT_TRUE(test::ReadHostFile(DriveC() + "/file") == content);
    std::filesystem::resize_file(DriveC() + "/file", 5000000000);
    EXPECT_EQ(Begin("C:\\file", "5000000005", "1"), "ctx:FILE_BEGIN_OK:5000000000");
    EXPECT_EQ(Data("123"), "ctx:FILE_MORE:5000000003");
    EXPECT_EQ(Data("456"), "ctx:FILE_FAIL:Too much data");
    EXPECT_TRUE(Logged("Download failed") && !transfers.IsActive("ctx"));
}

TEST_F(TransferTest, WhatCannotBeWrittenIsAnswered) {
    const std::pair<Text, Text> rows[] = {{"Q:\\x", "5"}, {"C:\\", "5"}, {"C:\\x", "five"}, {"C:\\x", "-1"}};
    for (const auto& [path, size] : rows) {
        EXPECT_TRUE(
            Begin(path, size, "1").starts_with("ctx:FILE_FAIL:Error in FileDownload.IncomingMessage: "))
            << path;
        EXPECT_FALSE(transfers.IsActive("ctx"));
    }
}

}  // namespace
}  // namespace rvl
