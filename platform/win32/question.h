#pragma once

#include <windows.h>

#include <exception>
#include <memory>
#include <optional>
#include <utility>

#include "platform/win32/com.h"
#include "platform/win32/run_on_thread.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {

/// Something that is asked of another program or a network drive, which may never answer, on a thread of its
/// own with the component library. Who waits long enough gives up the answer.
template <class Answer>
class Question {
 public:
    template <class Ask>
    explicit Question(Ask ask) : m_state(std::make_shared<State>()) {
        const bool asked = RunOnThread([state = m_state, ask = std::move(ask)] {
            state->Find(ask);
            SetEvent(state->over.get());
        });
        if (!asked) SetEvent(m_state->over.get());
    }

    bool IsOver(DWORD milliseconds) const {
        return WaitForSingleObject(m_state->over.get(), milliseconds) == WAIT_OBJECT_0;
    }

    /// None when there is no answer within this time, or it was an exception.
    std::optional<Answer> Wait(DWORD milliseconds) const {
        return IsOver(milliseconds) ? m_state->answer : std::nullopt;
    }

 private:
    struct State {
        const UniqueHandle over{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
        std::optional<Answer> answer;

        template <class Ask>
        void Find(const Ask& ask) noexcept {
            try {
                const ComScope com;
                answer = ask();
            } catch (const std::exception&) {  // none
            }
        }
    };

    std::shared_ptr<State> m_state;
};

}  // namespace rvl::platform
