#pragma once

#include <wx/frame.h>

#include <functional>

#include "session/administrator_message_view.h"
#include "session/helper_windows.h"

class wxButton;
class wxPanel;

namespace rvl {

class HTMLView;

/// The behaviour behind an administrator's message, which lives as long as these functions do.
struct AdministratorMessageOperations {
    std::function<void(const AdministratorMessageOrder&)> showDialog;
    std::function<void()> closeNow;
    std::function<void()> continueWorking;
};

using AdministratorMessageFactory = std::function<AdministratorMessageOperations(AdministratorMessageView&)>;

/// frmClientTerminateFrontend. The toolkit owns it; it destroys itself once it is unloaded.
class AdministratorMessageWindow : public wxFrame, public AdministratorMessageView {
 public:
    explicit AdministratorMessageWindow(const AdministratorMessageFactory& factory);

    void ShowDialog(const AdministratorMessageOrder& order) { m_operations.showDialog(order); }

    void SetCaption(const Text& caption) override;
    void SetMessage(const Text& html) override;
    void DisableContinueButton() override;
    void DisableCloseNowButton() override;
    void DisableCloseButton() override;
    void ShowOnTopWithoutFocus() override;
    void Unload() override;

 private:
    wxButton* MakeButton(const char* name, const char* label, std::function<void()> clicked);
    void Arrange();
    void AddLink(const wxString& address);
    void OnClose(wxCloseEvent& event);

    wxPanel* m_page;      ///< takes care of the keys; owned by the toolkit, as every control
    HTMLView* m_message;  ///< txtMessage
    wxButton* m_closeNow;
    wxButton* m_continue;
    wxSizer* m_links = nullptr;
    bool m_closeDisabled = false;
    AdministratorMessageOperations m_operations;
};

}  // namespace rvl
