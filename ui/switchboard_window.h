#pragma once

#include <functional>

#include "session/switchboard_view.h"
#include "ui/main_window.h"
#include "ui/window_place.h"

class wxBookCtrlEvent;
class wxNotebook;

namespace rvl {

class AdvancedPage;
class SwitchboardPage;

/// What the user does in the switchboard window.
struct SwitchboardEvents {
    std::function<void(std::int32_t frontendId, const Text& name)> start;
    std::function<void(std::int32_t frontendId)> chosen;  ///< on the advanced tab
    std::function<void()> tabChanged;
};

/// frmClientMain. The toolkit owns it; SetQueryUnload tells of its end.
class SwitchboardWindow : public MainWindow, public SwitchboardView {
 public:
    SwitchboardWindow();

    void Listen(SwitchboardEvents events) { m_events = std::move(events); }

    void Show() override;
    bool Show(bool shown) override { return MainWindow::Show(shown); }
    void SetCaption(const Text& caption) override;
    Tab ShownTab() const override;
    void SetBusyPointer(bool busy) override;
    void ClearFrontends() override;
    void AddFrontend(const FrontendItem& item) override;
    void RemoveFrontend(std::int32_t frontendId) override;
    void EnableAdvanced(bool enabled) override;
    void ShowHistory(const std::vector<VersionHistoryRow>& rows) override;
    std::vector<Text> LoadedForms() const override;
    void UnloadForm(const Text& name) override;

 private:
    void MakePages();
    void ForwardEvents();
    void OnPaint(wxPaintEvent&);
    void OnKey(wxKeyEvent& event);
    void OnTabChanging(wxBookCtrlEvent& event);
    void OnTabChanged(wxBookCtrlEvent& event);
    void FocusList();
    void KeepPlace() const override;

    SwitchboardEvents m_events;
    wxNotebook* m_tabs;  ///< owned by the toolkit, as every control
    SwitchboardPage* m_switchboard = nullptr;
    AdvancedPage* m_advanced = nullptr;
    WindowPlace m_place;
    bool m_advancedEnabled = false;
    bool m_busy = false;
};

}  // namespace rvl
