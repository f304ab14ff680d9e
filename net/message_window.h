#pragma once

#include <functional>
#include <memory>

#include "platform/text.h"

namespace rvl {

/// The notification channel that sockets share: where their deferred events are posted. Closing the channel
/// (dropping the last reference) discards what is still posted.
class MessageWindow : public std::enable_shared_from_this<MessageWindow> {
 public:
    static std::shared_ptr<MessageWindow> Create(Text caption);

    const Text& Caption() const { return m_caption; }
    void Post(std::function<void()> handler);

 private:
    explicit MessageWindow(Text caption) : m_caption(std::move(caption)) {}
    Text m_caption;
};

}  // namespace rvl
