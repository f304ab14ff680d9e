#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl::deployserver {

class WorkstationReport;

enum class OrderKind { Deploy, MakeAvailable, Remove };

/// What is to become of a version for one user; with Remove an empty user stands for the template.
struct UserOrder {
    OrderKind kind;
    Text user;
};

/// The version that orders are about.
struct OrderedVersion {
    std::int32_t id = 0;
    std::int32_t fileCount = 0;  ///< 0: as many as the workstation reports
};

Text CommandOf(const UserOrder& order);

/// The command, version and user of an order as lines name it: "FRONTEND_DEPLOY 12 for OFFICE\ann".
Text Describe(const UserOrder& order, const OrderedVersion& version);

/// True when the report says that nothing is left to do: a deployment has all its files, one that was only
/// made available is there, what was to be removed is not.
bool IsFulfilled(const UserOrder& order, const OrderedVersion& version, const WorkstationReport& report);

/// What the report says, in one line: "DEPLOYED ... complete" or "INCOMPLETE ...".
Text Judgement(const UserOrder& order, const OrderedVersion& version, const WorkstationReport& report);

}  // namespace rvl::deployserver
