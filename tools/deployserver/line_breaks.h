#pragma once

#include "platform/text.h"

namespace rvl::deployserver {

/// A text that was written within one line: "\n" becomes CR LF and "\\" one backslash, any other backslash
/// stays.
Text WithLineBreaks(TextView written);

}  // namespace rvl::deployserver
