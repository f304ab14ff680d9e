#pragma once

#include <glib.h>

#include <functional>

namespace rvl::platform {

/// A GLib source that reports the poll conditions of one descriptor. Reports never nest for one descriptor:
/// while its handler runs, a nested loop leaves it alone.
class SocketWatch {
 public:
    using Handler = std::function<void(GIOCondition)>;

    SocketWatch(int descriptor, GIOCondition conditions, Handler handler);
    ~SocketWatch();
    SocketWatch(const SocketWatch&) = delete;
    SocketWatch& operator=(const SocketWatch&) = delete;

    void SetConditions(GIOCondition conditions);

 private:
    GSource* m_source;
    gpointer m_tag;
};

}  // namespace rvl::platform
