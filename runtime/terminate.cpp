#include "runtime/terminate.h"

#include <utility>

#include "platform/process.h"
#include "runtime/log_file.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

std::function<void()> g_lastAction;

void RunLastAction() noexcept {
    try {
        if (const auto action = std::exchange(g_lastAction, nullptr)) action();
    } catch (...) {  // the process ends either way
    }
}

}  // namespace

void SetLastAction(std::function<void()> action) {
    g_lastAction = std::move(action);
}

void Terminate(int exitCode, bool suppressTag, bool silent) {
    if (!silent) {
        Log("Terminating with return value #" + NumberText(exitCode), suppressTag);
        RunLastAction();
    }
    platform::ExitProcessNow(exitCode);
}

}  // namespace rvl
