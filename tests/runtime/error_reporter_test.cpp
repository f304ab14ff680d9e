#include "runtime/error_reporter.h"

#include <gtest/gtest.h>

#include "runtime/log_file.h"
#include "runtime/message_box.h"
#include "runtime/process_state.h"
#include "tests/support/fake_dialogs.h"
#include "tests/support/workstation.h"

namespace rvl {
namespace {

using test::Logged;

class ErrorReporterTest : public testing::Test {
 protected:
    ErrorReporterTest() { InstallErrorSink(&reporter); }
    ~ErrorReporterTest() override {
        static ErrorReporter standard;
        InstallErrorSink(&standard);
        State().ServiceMode = State().SuppressErrorDialog = false;
    }

    void Report() { reporter.ReportError("Util.Do", {11, "DAO", "Division", {}, 0, 120}, false); }
    /// The dialog of the report fails, which is an error while reporting an error.
    void ReportTwice() {
        dialogs.onDialog = [] { throw Error(7, "Form", "Memory"); };
        Report();
    }

    const test::WithoutBrowser withoutBrowser;
    ErrorReporter reporter;
    test::FakeDialogs dialogs;
};

using ErrorReporterDeathTest = ErrorReporterTest;

TEST_F(ErrorReporterTest, ReportText) {
    const auto unknownVersion = static_cast<std::int32_t>(0x800427DD);
    reporter.ReportError("A", {11, "A", "x", {}, 0, 0}, false);
    EXPECT_TRUE(Logged("Error 0x0000000B from A\r\n\r\nx"));
    reporter.ReportError("B", {unknownVersion, "", "x", {}, 0, 0}, false, "reading", "!");
    EXPECT_TRUE(Logged("Error 0x800427DD while reading via B\r\n\r\nx!"));
    reporter.SetExplainer([](std::int32_t, TextView) { return "Hint"; });
    Report();
    EXPECT_TRUE(Logged("Error 0x0000000B from DAO via Util.Do:120\r\n\r\nDivision\r\n\r\nHint"));
    EXPECT_EQ(ErrorText({-5, "DAO", "x", {}, 0, 0}), "Error #-5 from DAO: x");
}

TEST_F(ErrorReporterTest, OnlyAnInteractiveProcessShowsTheDialog) {
    State().ServiceMode = true;
    Report();
    State().ServiceMode = !(State().SuppressErrorDialog = true);
    Report();
    EXPECT_TRUE(dialogs.dialogs.empty());
    State().SuppressErrorDialog = false;
    Report();
    ASSERT_EQ(dialogs.dialogs.size(), 1u);
    const auto& [version, code, source, message, function] = dialogs.dialogs[0];
    EXPECT_EQ(version + code + source + message + function, "1.1.30x0000000BDAODivisionUtil.Do:120");
}

TEST_F(ErrorReporterTest, ReRaisedAsItWas) {
    for (const int depth : {0, 1, 2}) {
        test::ClearLog();
        State().ErrorDepth = depth;
        dialogs.answers = {kNo};
        EXPECT_EQ(test::ErrorOf([&] {
                      reporter.ReportError("Util.Do", {11, "DAO", "Division", {}, 0, 120}, true);
                  }),
                  "11 DAO: Division");
        EXPECT_EQ(std::exchange(State().ErrorDepth, 0), depth);
        EXPECT_EQ(test::LogContent().empty(), depth == 2);  // the third is raised without a word
    }
}

TEST_F(ErrorReporterTest, TheCriticalBoxStandsInForAFailedDialog) {
    dialogs.answers = {kYes, kOk, kYes, kOk, kNo};
    ReportTwice();
    ASSERT_EQ(dialogs.boxes.size(), 5u);
    for (const std::size_t index : {0, 2, 4})
        EXPECT_EQ(dialogs.boxes[index].title + std::to_string(dialogs.boxes[index].style) +
                      dialogs.boxes[index].prompt,
                  "Critial Error19Error 0x00000007 from Form via frmError.ShowModal\r\n\r\nMemory\r\n\r\n"
                  "Click [Yes] to visit our support site\r\n"
                  "Click [No] to attempt to continue past this error\r\n"
                  "Click [Cancel] to quit the application now without saving");
    EXPECT_TRUE(dialogs.boxes[1].prompt.starts_with("Unable to load "));
    EXPECT_EQ(State().ErrorDepth + State().MsgBoxDepth, 0);
}

TEST_F(ErrorReporterDeathTest, ErrorsNestedTooDeepEndTheProcess) {
    dialogs.answers = {kYes, kOk, kCancel};
    EXPECT_EXIT(ReportTwice(), testing::ExitedWithCode(2), "");
    EXPECT_TRUE(Logged("Terminating with return value #2"));
    dialogs.answers = {kYes};
    EXPECT_EXIT(ExitFromErrorDialog(), testing::ExitedWithCode(2), "");
    dialogs.onBox = [] { throw Error(7, "Box", "a third one"); };
    EXPECT_EXIT(ReportTwice(), testing::ExitedWithCode(1), "");
    EXPECT_FALSE(Logged("Terminating with return value #1"));
    State().ServiceMode = true;
    reporter.SetExplainer([this](auto...) { return State().ErrorDepth == 1 ? Report(), "" : ""; });
    EXPECT_EXIT(Report(), testing::ExitedWithCode(1), "");
    EXPECT_TRUE(Logged("Service terminating due to above error") &&
                Logged("Terminating with return value #1"));
}

TEST_F(ErrorReporterTest, MessageBoxes) {
    dialogs.answers = {kYes, 99};
    dialogs.onBox = [this] {
        dialogs.onBox = nullptr;
        EXPECT_EQ(MsgBox("inner", kButtonsYesNo, "Title"), kYes);
    };
    EXPECT_EQ(MsgBox("outer", kButtonsYesNo), 99);
    State().ServiceMode = true;
    EXPECT_EQ(MsgBox("service", kButtonsOk), kOk);
    ASSERT_EQ(dialogs.boxes.size(), 3u);
    EXPECT_TRUE(!dialogs.boxes[0].plain && dialogs.boxes[1].plain && !dialogs.boxes[2].plain);
    EXPECT_EQ(dialogs.boxes[1].title + dialogs.boxes[2].title, "TitleRavelin Client");
    EXPECT_TRUE(Logged("[GUI] MsgBox: \"inner\": Yes") && Logged("[GUI] MsgBox: \"outer\": Unknown"));
    EXPECT_FALSE(Logged("[GUI] MsgBox: \"service\": OK"));
}

}  // namespace
}  // namespace rvl
