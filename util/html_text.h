#pragma once

#include "platform/text.h"

namespace rvl {

/// A message that somebody has written as HTML or as plain text, as HTML that shows its lines. Line ends
/// become line breaks unless the markup arranges the lines itself; without any markup, "<" and "&" stand for
/// themselves. Entities such as "&lt;" are markup in both.
Text HtmlFromMessage(TextView message);

}  // namespace rvl
