#include "ui/html_view.h"

#include <algorithm>
#include <array>

#include "platform/process.h"
#include "runtime/log_file.h"
#include "ui/wx_text.h"
#include "util/handle_error.h"
#include "util/html_text.h"

namespace rvl {
namespace {

/// A message can lead to a page, but not start a program.
bool IsHarmless(const wxString& address) {
    static const std::array<const char*, 3> kSchemes = {"http://", "https://", "mailto:"};
    return std::any_of(kSchemes.begin(), kSchemes.end(),
                       [&](const char* scheme) { return address.Lower().StartsWith(scheme); });
}

void CollectLinks(const wxHtmlCell* cell, std::vector<wxString>& links) {
    for (; cell != nullptr; cell = cell->GetNext()) {
        const wxHtmlLinkInfo* link = cell->GetLink();
        if (link != nullptr && std::find(links.begin(), links.end(), link->GetHref()) == links.end())
            links.push_back(link->GetHref());
        CollectLinks(cell->GetFirstChild(), links);
    }
}

}  // namespace

HTMLView::HTMLView(wxWindow* parent, const char* name)
    : wxHtmlWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxHW_DEFAULT_STYLE | wxBORDER_THEME,
                   name) {
    SetStandardFonts(GetFont().GetPointSize(), GetFont().GetFaceName());
}

void HTMLView::SetMessage(const Text& message) {
    SetPage(ToWx(HtmlFromMessage(message)));
}

std::vector<wxString> HTMLView::Links() const {
    std::vector<wxString> links;
    CollectLinks(GetInternalRepresentation(), links);
    return links;
}

void HTMLView::OpenLink(const wxString& address) try {
    if (!IsHarmless(address) || !platform::OpenDocument(FromWx(address)))
        Log("Cannot open " + FromWx(address));
} catch (...) {
    HandleError("HTMLView.OpenLink");
}

void HTMLView::OnLinkClicked(const wxHtmlLinkInfo& link) {
    OpenLink(link.GetHref());
}

}  // namespace rvl
