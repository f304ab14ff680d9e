#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text.h"

namespace rvl {

/// "yyyy-mm-dd HH:nn:ss"
Text FormatDateTime(const platform::CalendarTime& time);

/// A date for SQL text, "#yyyy-mm-dd HH:nn:ss#". The moment is shown as UTC, as it is stored, never in local
/// time. Raises 6 "Overflow" outside the years 0 to 9999.
Text SQLDate(platform::FileSeconds utc);

}  // namespace rvl
