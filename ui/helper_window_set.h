#pragma once

#include <type_traits>  // which the toolkit's header below takes for granted
#include <vector>

#include <wx/weakref.h>

#include "session/helper_windows.h"
#include "ui/administrator_message_window.h"
#include "ui/helper_window.h"
#include "ui/new_version_window.h"

namespace rvl {

/// The windows that the helper opens, several messages and notices at once. The toolkit must have started.
class HelperWindowSet : public HelperWindows {
 public:
    HelperWindowSet(AdministratorMessageFactory factory, MainWindow::QueryUnload queryUnload);

    void LoadHelperWindow(const Text& caption, bool shown) override;
    void UnloadHelperWindow() override;
    void OpenAdministratorMessage(const AdministratorMessageOrder& order) override;
    bool IsNewVersionNoticeOpen(std::int32_t frontendId) const override;
    void OpenNewVersionNotice(std::int32_t frontendId, const Text& frontendName) override;

 private:
    bool OnQueryUnload(UnloadMode mode);

    AdministratorMessageFactory m_factory;
    MainWindow::QueryUnload m_queryUnload;
    wxWeakRef<HelperWindow> m_helper;
    std::vector<wxWeakRef<AdministratorMessageWindow>> m_messages;
    std::vector<wxWeakRef<NewVersionWindow>> m_notices;
};

}  // namespace rvl
