#pragma once

#include <wx/html/htmlwin.h>

#include <vector>

#include "platform/text.h"

namespace rvl {

/// Shows a message that may carry HTML. It loads nothing from outside, pictures neither; a link to a web page
/// or a mail address opens in the program that is meant for it.
class HTMLView : public wxHtmlWindow {
 public:
    explicit HTMLView(wxWindow* parent, const char* name);

    void SetMessage(const Text& message);  ///< HTML, or plain text whose lines stay

    /// Where the links of the message lead to, each once, in their order.
    std::vector<wxString> Links() const;

    static void OpenLink(const wxString& address);

 private:
    wxHtmlOpeningStatus OnOpeningURL(wxHtmlURLType, const wxString&, wxString*) const override {
        return wxHTML_BLOCK;
    }
    void OnLinkClicked(const wxHtmlLinkInfo& link) override;
};

}  // namespace rvl
