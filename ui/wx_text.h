#pragma once

#include <wx/string.h>

#include "platform/text.h"

namespace rvl {

/// A text as the windows show it.
inline wxString ToWx(TextView text) {
    return wxString::FromUTF8(Utf8FromText(text));
}

/// The same for what takes line feeds alone for line ends.
inline wxString ToWxLines(TextView text) {
    wxString lines = ToWx(text);
    lines.Replace("\r\n", "\n");
    return lines;
}

/// The same for a label, in which an ampersand is no mnemonic.
inline wxString ToWxLabel(TextView text) {
    wxString label = ToWxLines(text);
    label.Replace("&", "&&");
    return label;
}

/// What no Text can hold becomes a question mark.
inline Text FromWx(const wxString& shown) {
    Text text;
    for (const wxUniChar character : shown)
        text += character.GetValue() < 256 ? static_cast<char>(character.GetValue()) : '?';
    return text;
}

}  // namespace rvl
