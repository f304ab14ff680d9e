#include "platform/event_loop.h"

#include <glib.h>

#include <utility>

#include "platform/posix/event_dispatch.h"

namespace rvl::platform {
namespace {

std::function<void()>& ErrorHandler() {
    static std::function<void()> handler;
    return handler;
}

GMainLoop*& RunningLoop() {
    static GMainLoop* loop = nullptr;
    return loop;
}

bool g_ending = false;  ///< the process is being ended inside a source that cannot be entered again

gboolean RunPosted(gpointer data) {
    DispatchEvent(*static_cast<std::function<void()>*>(data));
    return G_SOURCE_REMOVE;
}

void DeletePosted(gpointer data) {
    std::unique_ptr<std::function<void()>>(static_cast<std::function<void()>*>(data));
}

}  // namespace

void DispatchEvent(const std::function<void()>& handler) noexcept {
    try {
        handler();
    } catch (...) {
        if (ErrorHandler()) ErrorHandler()();
    }
}

void EndNestedLoops() {
    g_ending = true;
}

void SetEventErrorHandler(std::function<void()> handler) {
    ErrorHandler() = std::move(handler);
}

void RunEventLoop() {
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    GMainLoop* outer = std::exchange(RunningLoop(), loop);
    g_main_loop_run(loop);
    RunningLoop() = outer;
    g_main_loop_unref(loop);
}

void QuitEventLoop() {
    if (RunningLoop() != nullptr) g_main_loop_quit(RunningLoop());
}

void ProcessPendingEvents() {
    if (g_ending) return;
    g_main_context_iteration(nullptr, FALSE);
}

void WaitForEvents(std::uint32_t milliseconds) {
    if (g_ending) return;
    WakeUp deadline([] {});
    deadline.After(milliseconds);
    g_main_context_iteration(nullptr, TRUE);
}

void PostEvent(std::function<void()> handler) {
    // Not the idle priority: posted events take their turn among sockets and timers.
    auto posted = std::make_unique<std::function<void()>>(std::move(handler));
    g_idle_add_full(G_PRIORITY_DEFAULT, RunPosted, posted.release(), DeletePosted);
}

struct WakeUp::Impl {
    std::function<void()> handler;
    GSource* source = nullptr;
};

namespace {

gboolean DispatchWakeUp(GSource* source, GSourceFunc, gpointer data) {
    g_source_set_ready_time(source, -1);
    DispatchEvent(*static_cast<std::function<void()>*>(data));
    return G_SOURCE_CONTINUE;
}

/// A timer handler may run a nested loop (a message box); the timers go on meanwhile.
GSource* NewWakeUpSource(std::function<void()>* handler) {
    static GSourceFuncs functions = {nullptr, nullptr, DispatchWakeUp, nullptr, nullptr, nullptr};
    GSource* source = g_source_new(&functions, sizeof(GSource));
    g_source_set_callback(source, G_SOURCE_FUNC(+[] {}), handler, nullptr);
    g_source_set_can_recurse(source, TRUE);
    g_source_attach(source, nullptr);
    return source;
}

}  // namespace

WakeUp::WakeUp(std::function<void()> handler) : m_impl(std::make_unique<Impl>()) {
    m_impl->handler = std::move(handler);
    m_impl->source = NewWakeUpSource(&m_impl->handler);
}

WakeUp::~WakeUp() {
    g_source_destroy(m_impl->source);
    g_source_unref(m_impl->source);
}

bool WakeUp::After(std::uint64_t milliseconds) {
    const gint64 moment = g_get_monotonic_time() + static_cast<gint64>(milliseconds) * 1000;
    g_source_set_ready_time(m_impl->source, moment);
    return true;
}

void WakeUp::Cancel() {
    g_source_set_ready_time(m_impl->source, -1);
}

}  // namespace rvl::platform
