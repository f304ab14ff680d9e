#pragma once

#include "platform/text.h"

namespace rvl::test {

/// An account that there is on every machine of the system at hand and that may own files.
extern const Text kSomebody;

}  // namespace rvl::test
