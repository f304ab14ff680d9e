#include "platform/modal_windows.h"

#include <glib-object.h>

#include "platform/posix/toolkit_function.h"

namespace rvl::platform {

/// The toolkit's modal windows block those of their own group.
void SeparateFromModalWindows(void* window) {
    const auto newGroup = ToolkitFunction<void*()>("gtk_window_group_new");
    const auto addWindow = ToolkitFunction<void(void*, void*)>("gtk_window_group_add_window");
    if (window == nullptr || newGroup == nullptr || addWindow == nullptr) return;
    void* group = newGroup();
    addWindow(group, window);
    g_object_unref(group);  // the window holds it
}

}  // namespace rvl::platform
