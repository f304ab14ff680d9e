#pragma once

#include "platform/text.h"

namespace rvl {

/// Bytes that come in at the back and leave at the front. Taking only moves a read position; what was taken
/// is released before an append once it is at least as much as what waits, so every byte is moved a constant
/// number of times.
class ByteQueue {
 public:
    void Append(TextView bytes) {
        if (m_taken >= Size()) {
            m_bytes.erase(0, m_taken);
            m_taken = 0;
        }
        m_bytes.append(bytes);
    }

    TextView Waiting() const { return TextView(m_bytes).substr(m_taken); }
    std::size_t Size() const { return m_bytes.size() - m_taken; }
    bool IsEmpty() const { return Size() == 0; }

    void Take(std::size_t count) {
        m_taken += count;
        if (IsEmpty()) Clear();
    }

    /// Empties the queue; a store that grew large is given back.
    void Clear() {
        constexpr std::size_t kKeptCapacity = 65536;
        m_bytes.clear();
        if (m_bytes.capacity() > kKeptCapacity) m_bytes.shrink_to_fit();
        m_taken = 0;
    }

 private:
    std::string m_bytes;
    std::size_t m_taken = 0;
};

}  // namespace rvl
