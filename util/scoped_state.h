#pragma once

namespace rvl {

/// Sets a flag for as long as it lives.
class ScopedFlag {
 public:
    explicit ScopedFlag(bool& flag) : m_flag(flag) { m_flag = true; }
    ~ScopedFlag() { m_flag = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
    bool& m_flag;
};

/// Counts one level deeper for as long as it lives.
template <typename Integer>
class ScopedDepth {
 public:
    explicit ScopedDepth(Integer& depth) : m_depth(depth) { ++m_depth; }
    ~ScopedDepth() { --m_depth; }
    ScopedDepth(const ScopedDepth&) = delete;
    ScopedDepth& operator=(const ScopedDepth&) = delete;

 private:
    Integer& m_depth;
};

}  // namespace rvl
