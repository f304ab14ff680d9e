#include "deploy/version_file_name.h"

namespace rvl {
namespace {

/// Windows drops spaces and dots at the end of a step, so that ".. " climbs like "..".
bool ClimbsUp(TextView step) {
    return step.substr(0, 2) == ".." && step.find_first_not_of(". ") == TextView::npos;
}

}  // namespace

bool StaysInFolder(TextView name) {
    if (name.size() >= 2 && name[1] == ':') return false;
    while (!name.empty()) {
        const std::size_t end = name.find_first_of("\\/");
        if (ClimbsUp(name.substr(0, end))) return false;
        name.remove_prefix(end == TextView::npos ? name.size() : end + 1);
    }
    return true;
}

}  // namespace rvl
