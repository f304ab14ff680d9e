#include "platform/event_loop.h"

#include <gtest/gtest.h>

#include "platform/error.h"
#include "platform/socket_endpoint.h"
#include "tests/support/workstation.h"
#include "util/ipv4.h"

namespace rvl::platform {
namespace {

using Handler = std::function<void()>;

TEST(EventLoop, PostedEventsKeepTheirOrderAndLoopsNest) {
    Text order;
    PostEvent([&] {
        order += "1(";
        PostEvent([&] { order += "3"; });
        PostEvent(QuitEventLoop);
        RunEventLoop();
        order += ")";
        QuitEventLoop();
    });
    PostEvent([&] { order += "2"; });
    RunEventLoop();
    EXPECT_EQ(order, "1(23)");
}

void PostRuns(const Handler& handler) {
    PostEvent(handler);
}

void WakeUpRuns(const Handler& handler) {
    static std::unique_ptr<WakeUp> wakeUp;
    wakeUp = std::make_unique<WakeUp>(handler);
    wakeUp->After(1);
}

void SocketRuns(const Handler& handler) {
    static SocketEndpoint endpoint;
    Ipv4Endpoint own{ParseDotted("127.0.0.1").value(), 0};
    endpoint.Open(Protocol::Udp);
    endpoint.Bind(own);
    endpoint.LocalPort(own.port);
    endpoint.Watch([handler](SocketNotification, int) { endpoint.Close(), handler(); });
    endpoint.SendTo(own, "x", 1);
}

TEST(EventLoop, AnExceptionEndsInTheHandlerAndTheLoopGoesOn) {
    for (const auto run : {PostRuns, WakeUpRuns, SocketRuns}) {
        int handled = 0, ran = 0;
        SetEventErrorHandler([&] { handled += std::current_exception() != nullptr; });
        run([&] { throw Error(++ran, "Test", "boom"); });
        EXPECT_TRUE(test::RunUntil([&] { return handled == 1; }));
        run([&] { throw ++ran; });
        EXPECT_TRUE(test::RunUntil([&] { return handled == 2; }));
        SetEventErrorHandler(nullptr);
        run([&] { throw ++ran; });
        EXPECT_TRUE(test::RunUntil([&] { return ran == 3; }));
    }
}

}  // namespace
}  // namespace rvl::platform
