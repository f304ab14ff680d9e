#include "platform/posix/socket_watch.h"

#include <memory>
#include <utility>

#include "platform/posix/event_dispatch.h"

namespace rvl::platform {
namespace {

struct WatchSource {
    GSource base;
    gpointer tag;
};

gboolean DispatchWatch(GSource* source, GSourceFunc, gpointer data) {
    const GIOCondition ready = g_source_query_unix_fd(source, reinterpret_cast<WatchSource*>(source)->tag);
    // GLib holds the handler until this call returns, even when the watch is destroyed by it.
    const auto& handler = *static_cast<SocketWatch::Handler*>(data);
    if (ready != 0) DispatchEvent([&] { handler(ready); });
    return G_SOURCE_CONTINUE;
}

void DeleteHandler(gpointer data) {
    std::unique_ptr<SocketWatch::Handler>(static_cast<SocketWatch::Handler*>(data));
}

GSourceFuncs g_watchFunctions = {nullptr, nullptr, DispatchWatch, nullptr, nullptr, nullptr};

}  // namespace

SocketWatch::SocketWatch(int descriptor, GIOCondition conditions, Handler handler)
    : m_source(g_source_new(&g_watchFunctions, sizeof(WatchSource))),
      m_tag(g_source_add_unix_fd(m_source, descriptor, conditions)) {
    reinterpret_cast<WatchSource*>(m_source)->tag = m_tag;
    auto owned = std::make_unique<Handler>(std::move(handler));
    g_source_set_callback(m_source, G_SOURCE_FUNC(+[] {}), owned.release(), DeleteHandler);
    g_source_attach(m_source, nullptr);
}

SocketWatch::~SocketWatch() {
    g_source_destroy(m_source);
    g_source_unref(m_source);
}

void SocketWatch::SetConditions(GIOCondition conditions) {
    g_source_modify_unix_fd(m_source, m_tag, conditions);
}

}  // namespace rvl::platform
