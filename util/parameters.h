#pragma once

#include <vector>

#include "platform/text.h"

namespace rvl {

/// The parameters between the NULs of a message's parameter text. The empty text is no parameter at all, so
/// that a list of one empty parameter cannot be told from the empty list.
std::vector<Text> SplitParameters(TextView params);

Text JoinParameters(const std::vector<Text>& parameters);

}  // namespace rvl
