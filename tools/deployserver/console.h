#pragma once

#include "platform/text.h"

namespace rvl::deployserver {

/// Standard output, one flushed line per event: scripts and tests read it while the server runs.
class Console {
 public:
    explicit Console(bool quiet) : m_quiet(quiet) {}

    void Step(TextView line) const;     ///< a protocol step, left out when quiet
    void Outcome(TextView line) const;  ///< always printed

 private:
    bool m_quiet;
};

}  // namespace rvl::deployserver
