#pragma once

#include <deque>
#include <functional>
#include <utility>

#include "util/scoped_state.h"

namespace rvl {

/// Keeps pieces of work apart that may be asked for while one of them runs, since sending lets events run:
/// such a piece waits, in order, until those before it are done.
class OneAtATime {
 public:
    /// Pieces behind one that fails with an error wait for the next Run, and come first then.
    template <typename Work>
    void Run(Work&& work) {
        if (m_running || !m_waiting.empty()) {
            m_waiting.emplace_back(std::forward<Work>(work));
            if (m_running) return;
        }
        const ScopedFlag running(m_running);
        if (m_waiting.empty()) work();
        while (!m_waiting.empty()) {
            const auto next = std::move(m_waiting.front());
            m_waiting.pop_front();
            next();
        }
    }

 private:
    bool m_running = false;
    std::deque<std::function<void()>> m_waiting;
};

}  // namespace rvl
