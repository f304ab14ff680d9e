#include "platform/standard_input.h"

#include <windows.h>

#include <atomic>
#include <deque>
#include <optional>
#include <utility>

#include "platform/win32/event_queue.h"
#include "platform/win32/input_lines.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {
namespace {

/// None: no line comes any more.
using Arrival = std::optional<std::string>;

/// What the object, its reader and the events on their way share.
class Delivery {
 public:
    explicit Delivery(StandardInput::Events events) : m_events(std::move(events)) {}

    void Stop() { m_stopped = true; }
    bool IsStopped() const { return m_stopped; }

    /// A handler that lets events run gets the lines that come then afterwards.
    void Add(Arrival arrival) {
        m_arrivals.push_back(std::move(arrival));
        if (m_isDelivering) return;
        const Busy busy(m_isDelivering);
        while (!m_arrivals.empty() && !m_stopped) {
            const Arrival next = std::move(m_arrivals.front());
            m_arrivals.pop_front();
            next ? m_events.Line(*next) : m_events.Ended();
        }
    }

 private:
    class Busy {
     public:
        explicit Busy(bool& flag) : m_flag(flag) { m_flag = true; }
        ~Busy() { m_flag = false; }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

     private:
        bool& m_flag;
    };

    const StandardInput::Events m_events;
    std::atomic<bool> m_stopped = false;
    std::deque<Arrival> m_arrivals;
    bool m_isDelivering = false;
};

void Post(const std::shared_ptr<Delivery>& delivery, Arrival arrival) {
    PostEventFromThread([delivery, arrival = std::move(arrival)] { delivery->Add(arrival); });
}

/// The thread that waits for lines. Nobody waits for it: the end of the process ends it too.
DWORD WINAPI ReadLines(void* context) try {
    const std::unique_ptr<std::shared_ptr<Delivery>> owned(static_cast<std::shared_ptr<Delivery>*>(context));
    const std::shared_ptr<Delivery> delivery = *owned;
    InputLines lines;
    for (bool more = true; more;) {
        Arrival arrival = lines.Next();
        more = arrival.has_value();
        if (delivery->IsStopped()) return 0;
        Post(delivery, std::move(arrival));
    }
    return 0;
} catch (...) {  // no memory for a line
    return 1;
}

}  // namespace

struct StandardInput::Impl {
    std::shared_ptr<Delivery> delivery;
    UniqueHandle reader;
};

StandardInput::StandardInput(Events events) : m_impl(std::make_unique<Impl>()) {
    NotificationWindow();  // of this thread, before the other one posts to it
    m_impl->delivery = std::make_shared<Delivery>(std::move(events));
    auto context = std::make_unique<std::shared_ptr<Delivery>>(m_impl->delivery);
    m_impl->reader.reset(CreateThread(nullptr, 0, ReadLines, context.get(), 0, nullptr));
    if (m_impl->reader)
        static_cast<void>(context.release());  // the thread's own now
    else
        Post(m_impl->delivery, std::nullopt);
}

StandardInput::~StandardInput() {
    m_impl->delivery->Stop();
    if (m_impl->reader) CancelSynchronousIo(m_impl->reader.get());
}

}  // namespace rvl::platform
