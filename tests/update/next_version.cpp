// Linked into the client in the place of runtime/process_state.cpp: the same program with a later version
// number.

#include "runtime/process_state.h"

namespace rvl {

ProcessState& State() {
    static ProcessState state;
    return state;
}

Text VersionString() {
    return "1.1.4";
}

}  // namespace rvl
