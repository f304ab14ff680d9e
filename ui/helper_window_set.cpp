#include "ui/helper_window_set.h"

#include <algorithm>

#include "session/new_version_notice.h"

namespace rvl {
namespace {

/// Windows destroy themselves; what is left of them here is forgotten with the next one.
template <class Window>
Window& Keep(std::vector<wxWeakRef<Window>>& windows, Window* window) {
    std::erase_if(windows, [](const wxWeakRef<Window>& one) { return one == nullptr; });
    windows.emplace_back(window);
    return *window;
}

template <class Window>
void DestroyAll(std::vector<wxWeakRef<Window>>& windows) {
    for (const wxWeakRef<Window>& window : windows)
        if (window != nullptr) window->Destroy();
}

}  // namespace

HelperWindowSet::HelperWindowSet(AdministratorMessageFactory factory, MainWindow::QueryUnload queryUnload)
    : m_factory(std::move(factory)), m_queryUnload(std::move(queryUnload)) {}

void HelperWindowSet::LoadHelperWindow(const Text& caption, bool shown) {
    m_helper = new HelperWindow(caption);  // the toolkit owns its windows
    m_helper->SetQueryUnload([this](UnloadMode mode) { return OnQueryUnload(mode); });
    m_helper->SetStatus("Front ends are watched while this runs.");
    if (shown) m_helper->Show();
}

bool HelperWindowSet::OnQueryUnload(UnloadMode mode) {
    if (m_queryUnload && !m_queryUnload(mode)) return false;
    DestroyAll(m_messages);
    DestroyAll(m_notices);
    return true;
}

void HelperWindowSet::UnloadHelperWindow() {
    if (m_helper != nullptr) m_helper->UnloadFor(UnloadMode::ByCode);
}

void HelperWindowSet::OpenAdministratorMessage(const AdministratorMessageOrder& order) {
    Keep(m_messages, new AdministratorMessageWindow(m_factory)).ShowDialog(order);
}

bool HelperWindowSet::IsNewVersionNoticeOpen(std::int32_t frontendId) const {
    return std::any_of(m_notices.begin(), m_notices.end(), [&](const wxWeakRef<NewVersionWindow>& notice) {
        return notice != nullptr && notice->IsShown() && notice->FrontendId() == frontendId;
    });
}

void HelperWindowSet::OpenNewVersionNotice(std::int32_t frontendId, const Text& frontendName) {
    auto* notice =
        new NewVersionWindow(frontendId, NewVersionCaption(frontendName), NewVersionMessage(frontendName));
    Keep(m_notices, notice).ShowDialog();
}

}  // namespace rvl
