#include "platform/wildcard.h"

#include "platform/latin1_case.h"

namespace rvl::platform {

/// In linear time over the last star.
bool MatchesWildcard(TextView name, TextView pattern) {
    std::size_t n = 0, p = 0, starPattern = TextView::npos, starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            starPattern = p++;
            starName = n;
        } else if (p < pattern.size() &&
                   (pattern[p] == '?' || LowerLatin1(pattern[p]) == LowerLatin1(name[n]))) {
            ++n, ++p;
        } else if (starPattern != TextView::npos) {
            p = starPattern + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == TextView::npos;
}

}  // namespace rvl::platform
