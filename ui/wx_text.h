#pragma once

#include <wx/string.h>

#include "platform/text.h"

namespace rvl {

/// A text as the windows show it.
inline wxString ToWx(TextView text) {
    return wxString::FromUTF8(Utf8FromText(text));
}

}  // namespace rvl
