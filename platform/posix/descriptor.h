#pragma once

#include <unistd.h>

#include <utility>

namespace rvl::platform {

/// An open file descriptor, closed at the end.
class Descriptor {
 public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~Descriptor() {
        if (IsOpen()) ::close(m_descriptor);
    }

    bool IsOpen() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }

 private:
    int m_descriptor = -1;
};

}  // namespace rvl::platform
