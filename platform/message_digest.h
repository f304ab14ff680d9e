#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace rvl::platform {

/// MD5 (RFC 1321). Raises an Error when the system refuses the algorithm.
class Md5 {
 public:
    Md5();
    ~Md5();
    Md5(const Md5&) = delete;
    Md5& operator=(const Md5&) = delete;

    void Reset();
    void Add(const void* data, std::size_t size);
    std::array<std::uint8_t, 16> Finish();

 private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace rvl::platform
