#include "platform/name_lookup.h"

#include <winsock2.h>

#include <array>
#include <cstring>
#include <utility>

#include "platform/event_loop.h"
#include "platform/win32/event_queue.h"

namespace rvl::platform {

/// The system may be writing into the buffer until it says that the lookup has completed, also when nobody
/// wants the answer any more.
struct NameLookup::Impl {
    explicit Impl(Completion whenDone)
        : m_completion(std::move(whenDone)), m_done([this](WPARAM task, LPARAM result) {
              if (reinterpret_cast<HANDLE>(task) == m_task) Complete(WSAGETASYNCERROR(result));
          }) {}

    void Begin(const std::shared_ptr<Impl>& self, HANDLE task) {
        m_task = task;
        m_self = self;
        if (task == nullptr) PostEvent([self, error = WSAGetLastError()] { self->Complete(error); });
    }

    void Cancel() { m_completion = nullptr; }

    Text host;
    std::uint32_t address = 0;
    bool reverse = false;

    UINT Message() const { return m_done.Message(); }
    char* Buffer() { return m_buffer.data(); }
    int BufferSize() const { return static_cast<int>(m_buffer.size()); }

 private:
    void Complete(int error) {
        const std::shared_ptr<Impl> alive = std::move(m_self);
        m_task = nullptr;
        if (error == 0) error = TakeAnswer();
        const Completion run = std::exchange(m_completion, nullptr);
        if (run) run(error, host, address);
    }

    int TakeAnswer() {
        const auto& answer = *reinterpret_cast<const hostent*>(m_buffer.data());
        if (reverse) {
            host = answer.h_name;
        } else {
            if (answer.h_addrtype != AF_INET || answer.h_addr_list[0] == nullptr) return WSANO_DATA;
            std::memcpy(&address, answer.h_addr_list[0], sizeof address);
        }
        return 0;
    }

    Completion m_completion;
    alignas(hostent) std::array<char, MAXGETHOSTSTRUCT> m_buffer{};
    HANDLE m_task = nullptr;
    std::shared_ptr<Impl> m_self;  ///< while the lookup is under way
    Notification m_done;
};

NameLookup::NameLookup(std::shared_ptr<Impl> impl) : m_impl(std::move(impl)) {}

NameLookup::~NameLookup() {
    m_impl->Cancel();
}

std::unique_ptr<NameLookup> NameLookup::Forward(const Text& host, Completion completion) {
    auto impl = std::make_shared<Impl>(std::move(completion));
    impl->host = host;
    impl->Begin(impl, WSAAsyncGetHostByName(NotificationWindow(), impl->Message(), host.c_str(),
                                            impl->Buffer(), impl->BufferSize()));
    return std::unique_ptr<NameLookup>(new NameLookup(std::move(impl)));
}

std::unique_ptr<NameLookup> NameLookup::Reverse(std::uint32_t address, Completion completion) {
    auto impl = std::make_shared<Impl>(std::move(completion));
    impl->address = address;
    impl->reverse = true;
    impl->Begin(impl,
                WSAAsyncGetHostByAddr(NotificationWindow(), impl->Message(),
                                      reinterpret_cast<const char*>(&impl->address), sizeof impl->address,
                                      AF_INET, impl->Buffer(), impl->BufferSize()));
    return std::unique_ptr<NameLookup>(new NameLookup(std::move(impl)));
}

}  // namespace rvl::platform
