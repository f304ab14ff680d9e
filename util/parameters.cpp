#include "util/parameters.h"

#include "util/text_functions.h"

namespace rvl {

std::vector<Text> SplitParameters(TextView params) {
    if (params.empty()) return {};
    const std::vector<TextView> pieces = SplitAt(params, TextView("\0", 1));
    return {pieces.begin(), pieces.end()};
}

Text JoinParameters(const std::vector<Text>& parameters) {
    Text joined;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (i > 0) joined += '\0';
        joined += parameters[i];
    }
    return joined;
}

}  // namespace rvl
