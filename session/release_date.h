#pragma once

#include "platform/text.h"

namespace rvl {

/// How a release date is shown: "2005-03-14", or "2005-03-14 09:30" when it is not midnight. What is not of
/// the form "yyyy-mm-dd[ HH:nn[:ss]]" stays as it came: whether the day or the month comes first in any
/// other one cannot be told.
Text ReleaseDateText(const Text& date);

}  // namespace rvl
