#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/text.h"

namespace rvl::platform {

/// One asynchronous name lookup; destroying it cancels it and its completion never runs.
class NameLookup {
 public:
    /// error is 0 or a socket error number (11001 "Host not found" and its neighbours); address is the
    /// first IPv4 address of the host in network byte order.
    using Completion = std::function<void(int error, const Text& host, std::uint32_t address)>;

    static std::unique_ptr<NameLookup> Forward(const Text& host, Completion completion);
    static std::unique_ptr<NameLookup> Reverse(std::uint32_t address, Completion completion);

    ~NameLookup();
    NameLookup(const NameLookup&) = delete;
    NameLookup& operator=(const NameLookup&) = delete;

    struct Impl;

 private:
    explicit NameLookup(std::shared_ptr<Impl> impl);
    std::shared_ptr<Impl> m_impl;
};

}  // namespace rvl::platform
