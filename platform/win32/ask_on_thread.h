#pragma once

#include <windows.h>

#include <exception>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

#include "platform/win32/com.h"
#include "platform/win32/unique_handle.h"

namespace rvl::platform {

/// Code that a thread still runs is never unloaded.
inline void KeepThisModule() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(&KeepThisModule), &module);
}

/// Something that is asked of another program or a network drive, which may never answer: on a thread of its
/// own with the component library. Who waits long enough gives up the answer.
template <class Answer>
class Question {
 public:
    /// `ask` owns what it uses.
    template <class Ask>
    explicit Question(Ask ask) : m_state(std::make_shared<State>()) {
        KeepThisModule();
        std::thread([state = m_state, ask = std::move(ask)] {
            const ComScope com;
            state->Find(ask);
        }).detach();
    }

    /// None when it has not been answered in this time, or ended with an exception.
    std::optional<Answer> Wait(DWORD milliseconds) const {
        return IsOver(milliseconds) ? m_state->answer : std::nullopt;
    }

    bool IsOver(DWORD milliseconds) const {
        return WaitForSingleObject(m_state->over.get(), milliseconds) == WAIT_OBJECT_0;
    }

 private:
    struct State {
        const UniqueHandle over{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
        std::optional<Answer> answer;

        template <class Ask>
        void Find(const Ask& ask) noexcept {
            try {
                answer = ask();
            } catch (const std::exception&) {  // there is no answer
            }
            SetEvent(over.get());
        }
    };

    std::shared_ptr<State> m_state;
};

}  // namespace rvl::platform
