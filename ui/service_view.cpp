#include "ui/service_view.h"

#include <utility>

#include "platform/process.h"
#include "ui/service_window.h"
#include "ui/toolkit.h"

namespace rvl {
namespace {

class OpenWindow : public ServiceView {
 public:
    OpenWindow(const Text& caption, std::function<bool(UnloadMode)> mayUnload)
        : m_window(new ServiceWindow(caption)) {  // the toolkit owns it
        m_window->SetQueryUnload(std::move(mayUnload));
        m_window->Show();
    }

    void SetStatus(const Text& status) override { m_window->SetStatus(status); }
    void SetDiscoveryMethod(const Text& method) override { m_window->SetDiscoveryMethod(method); }

 private:
    ServiceWindow* m_window;
};

}  // namespace

std::unique_ptr<ServiceView> OpenServiceWindow(const Text& caption,
                                               std::function<bool(UnloadMode)> mayUnload) {
    if (!platform::HasDisplay() || !StartToolkit()) return nullptr;
    return std::make_unique<OpenWindow>(caption, std::move(mayUnload));
}

}  // namespace rvl
