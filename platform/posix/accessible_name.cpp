#include "platform/accessible_name.h"

#include "platform/posix/toolkit_function.h"

namespace rvl::platform {

void SetAccessibleName(void* control, const Text& name) {
    const auto accessibleOf = ToolkitFunction<void*(void*)>("gtk_widget_get_accessible");
    const auto setName = ToolkitFunction<void(void*, const char*)>("atk_object_set_name");
    if (control == nullptr || accessibleOf == nullptr || setName == nullptr) return;
    setName(accessibleOf(control), Utf8FromText(name).c_str());
}

}  // namespace rvl::platform
