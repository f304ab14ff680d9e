#pragma once

#include <cstdint>
#include <vector>

#include "platform/text.h"

namespace rvl::deployserver {

/// What users and the administrator have of the server.
struct PeopleOptions {
    std::vector<std::int32_t> denied;  ///< front ends that nobody may start
    Text denialText;                   ///< empty: the usual one
    Text historyFile;                  ///< empty: none
    bool takesOrders = false;          ///< from standard input
};

}  // namespace rvl::deployserver
