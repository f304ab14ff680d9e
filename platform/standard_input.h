#pragma once

#include <functional>
#include <memory>
#include <string>

namespace rvl::platform {

/// The lines of standard input as events of the loop, which never waits for them. A handler is not called
/// while another one of the same object runs.
class StandardInput {
 public:
    struct Events {
        std::function<void(const std::string& utf8)> Line;  ///< without its line end, as it was typed
        std::function<void()> Ended;                        ///< no line comes any more
    };

    explicit StandardInput(Events events);
    ~StandardInput();
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

 private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace rvl::platform
