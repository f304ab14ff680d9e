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

    /// Empties the queue; its room stays for what comes next.
    void Clear() {
        m_bytes.clear();
        m_taken = 0;
    }

    /// Gives back the room that a quiet connection does not need.
    void ReleaseRoom() {
        if (IsEmpty()) m_bytes.shrink_to_fit();
    }

 private:
    std::string m_bytes;
    std::size_t m_taken = 0;
};

}  // namespace rvl
