#include "runtime/process_state.h"

#include "runtime/version.h"
#include "util/text_functions.h"

namespace rvl {

ProcessState& State() {
    static ProcessState state;
    return state;
}

Text VersionString() {
    return NumberText(kVersionMajor) + "." + NumberText(kVersionMinor) + "." + NumberText(kVersionRevision);
}

}  // namespace rvl
