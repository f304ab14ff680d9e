#include "platform/session_end.h"

#include <glib-unix.h>

#include <csignal>
#include <utility>

#include "platform/posix/event_dispatch.h"

namespace rvl::platform {
namespace {

std::function<void()> g_handler;

gboolean OnSignal(gpointer) {
    DispatchEvent(g_handler);
    return G_SOURCE_CONTINUE;
}

}  // namespace

void OnSessionEnd(std::function<void()> handler) {
    g_handler = std::move(handler);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        g_unix_signal_add(signal, OnSignal, nullptr);
}

}  // namespace rvl::platform
