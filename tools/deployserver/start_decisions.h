#pragma once

#include <cstdint>
#include <map>

#include "tools/deployserver/job.h"
#include "tools/deployserver/people_options.h"

namespace rvl::deployserver {

/// Answers the users who want to start a front end: all may be started that are not denied.
class StartDecisions {
 public:
    explicit StartDecisions(const PeopleOptions& options);

    /// Answers a start request; false for any other message.
    bool Answer(Workstation& workstation, const Message& message) const;

    void Deny(std::int32_t frontendId, const Text& text);  ///< with the usual text when it is empty
    bool Allow(std::int32_t frontendId);                   ///< false when it was not denied

 private:
    std::map<std::int32_t, Text> m_denied;  ///< what the user is told
};

}  // namespace rvl::deployserver
