#pragma once

#include <algorithm>
#include <cstdint>

#include "tools/deployserver/options.h"

namespace rvl::deployserver {

/// The one cut of a link in the middle of a transfer: counts what is sent to all workstations together.
class LinkCut {
 public:
    explicit LinkCut(const CutOrder& order) : m_left(order.afterBytes), m_method(order.method) {}

    CutMethod Method() const { return m_method; }

    /// How much of a piece may be sent before the cut.
    std::size_t Limit(std::size_t pieceSize) const {
        if (!m_left || *m_left >= static_cast<std::int64_t>(pieceSize)) return pieceSize;
        return static_cast<std::size_t>(*m_left);
    }

    /// True once, when the number is reached.
    bool IsDueAfter(std::size_t sent) {
        if (!m_left) return false;
        *m_left -= std::min(*m_left, static_cast<std::int64_t>(sent));
        if (*m_left > 0) return false;
        m_left.reset();
        return true;
    }

 private:
    std::optional<std::int64_t> m_left;
    CutMethod m_method;
};

}  // namespace rvl::deployserver
