#include "net/message_window.h"

#include <utility>

#include "platform/event_loop.h"

namespace rvl {

std::shared_ptr<MessageWindow> MessageWindow::Create(Text caption) {
    struct Window : MessageWindow {  // gives make_shared a constructor to call
        explicit Window(Text text) : MessageWindow(std::move(text)) {}
    };
    return std::make_shared<Window>(std::move(caption));
}

void MessageWindow::Post(std::function<void()> handler) {
    platform::PostEvent([channel = weak_from_this(), handler = std::move(handler)] {
        if (const auto open = channel.lock()) handler();
    });
}

}  // namespace rvl
