#include "platform/standard_input.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <deque>
#include <optional>
#include <utility>

#include "platform/posix/socket_watch.h"

namespace rvl::platform {
namespace {

constexpr std::size_t kMostAtOnce = 4096;
constexpr auto kReadable = static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR);

/// Cuts what was read into lines.
class LineCutter {
 public:
    void Add(const char* bytes, std::size_t count) {
        m_rest.append(bytes, count);
        for (std::size_t end; (end = m_rest.find('\n')) != std::string::npos; m_rest.erase(0, end + 1))
            AddLine(m_rest.substr(0, end));
    }

    void AddRest() {
        if (!m_rest.empty()) AddLine(std::exchange(m_rest, {}));
    }

    std::optional<std::string> Next() {
        if (m_lines.empty()) return std::nullopt;
        std::string line = std::move(m_lines.front());
        m_lines.pop_front();
        return line;
    }

 private:
    void AddLine(std::string line) {
        if (line.ends_with('\r')) line.pop_back();
        m_lines.push_back(std::move(line));
    }

    std::string m_rest;
    std::deque<std::string> m_lines;
};

}  // namespace

struct StandardInput::Impl {
    Events events;
    LineCutter lines;
    std::optional<SocketWatch> watch;

    void OnReadable() {
        std::array<char, kMostAtOnce> buffer;
        const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
        if (count > 0)
            lines.Add(buffer.data(), static_cast<std::size_t>(count));
        else
            lines.AddRest();
        while (const auto line = lines.Next())
            events.Line(*line);
        if (count > 0) return;
        watch.reset();
        events.Ended();
    }
};

StandardInput::StandardInput(Events events) : m_impl(std::make_unique<Impl>()) {
    m_impl->events = std::move(events);
    m_impl->watch.emplace(STDIN_FILENO, kReadable,
                          [impl = m_impl.get()](GIOCondition) { impl->OnReadable(); });
}

StandardInput::~StandardInput() = default;

}  // namespace rvl::platform
