#include "session/administrator_message.h"

#include <gtest/gtest.h>

#include "tests/session/fake_desktop.h"
#include "tests/support/virtual_clock.h"

namespace rvl {
namespace {

struct FakeView : AdministratorMessageView {
    void SetCaption(const Text& text) override { caption = text; }
    void SetMessage(const Text& html) override { done += html + "|"; }
    void DisableContinueButton() override { done += "no continue|"; }
    void DisableCloseNowButton() override { done += "no close now|"; }
    void DisableCloseButton() override { done += "no x|"; }
    void ShowOnTopWithoutFocus() override { done += "show|"; }
    void Unload() override { done += "unload|"; }
    Text Done() { return std::exchange(done, ""); }

    Text caption, done;
};

const Text kClosing = "no close now|no continue|no x|";

class AdministratorMessageTest : public testing::Test {
 protected:
    test::VirtualClock clock{1000};
    test::FakeDesktop desktop;
    FakeView view;
    AdministratorMessage message{desktop, view};
};

TEST_F(AdministratorMessageTest, ComesAndGoes) {
    for (const bool noContinue : {false, true}) {
        message.ShowDialog({5, 9, "T", 10, noContinue, "<b>"});
        EXPECT_EQ(view.Done(), "unload|");  // the window is gone
        desktop.AddAccess(9, "");
        message.ShowDialog({5, 9, "T", 10, noContinue, "<b>"});
        EXPECT_EQ(view.Done(), Text("<b>|") + (noContinue ? "no continue|no x|" : "") + "show|");
        if (noContinue) message.ContinueWorking();
        desktop.classes.clear();
        clock.Advance(60000);
        EXPECT_EQ(view.Done() + desktop.Done(), "unload|");
    }
}

TEST_F(AdministratorMessageTest, Captions) {
    const struct {
        std::int32_t seconds;
        std::uint64_t after;
        Text caption;
    } cases[] = {{100, 500, "T [01:40]"}, {100, 70000, "T [00:30]"},         {100, 70500, "T"},
                 {100, 99500, "T"},       {100, 100000, "T [00:00]"},        {20, 0, "T [00:20]"},
                 {20, 500, "T"},          {0x7FFFFFFF, 0, "T [35791394:07]"}};
    desktop.AddAccess(9, "");
    for (const auto& [seconds, after, caption] : cases) {
        AdministratorMessage one(desktop, view);
        one.ShowDialog({5, 9, "T", seconds, false, ""});
        clock.Advance(after);
        EXPECT_EQ(view.caption, caption) << seconds << " after " << after;
    }
}

/// Access is asked, told and ended, each time only while its window is there, and all over again when even
/// that was in vain. The button changes nothing meanwhile.
TEST_F(AdministratorMessageTest, ClosingChain) {
    const Text asked = "close 9|", told = asked + "quit 9|", ended = told + "terminate 9|";
    const struct {
        std::int32_t seconds;
        std::uint64_t goneAfter;
        Text done;
    } cases[] = {{0, 2499, asked}, {INT32_MIN, 2500, told}, {0, 2999, told}, {-1, 3499, ended}};
    for (const auto& [seconds, goneAfter, done] : cases) {
        desktop.AddAccess(9, "");
        message.ShowDialog({5, 9, "T", seconds, false, "<b>"});
        clock.Advance(goneAfter);
        message.CloseNow();
        desktop.classes.clear();
        clock.Advance(10000);
        EXPECT_EQ(desktop.Done(), done) << goneAfter;
        EXPECT_EQ(view.Done(), kClosing + "<b>|unload|");
    }
}

TEST_F(AdministratorMessageTest, SeveralAtOnce) {
    AdministratorMessage other(desktop, view);
    desktop.AddAccess(8, ""), desktop.AddAccess(9, "");
    message.ShowDialog({5, 9, "T", 3, false, ""});
    other.ShowDialog({6, 8, "T", 4, false, ""});
    clock.Advance(7000);
    EXPECT_EQ(desktop.Done(), "close 9|close 8|quit 9|terminate 9|quit 8|close 9|terminate 8|");
}

}  // namespace
}  // namespace rvl
