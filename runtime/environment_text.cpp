#include "runtime/environment_text.h"

#include <algorithm>
#include <optional>

#include "platform/environment.h"

namespace rvl {

Text ExpandEnvironmentText(TextView text) {
    Text expanded;
    while (!text.empty()) {
        const std::size_t close = text[0] == '%' ? text.find('%', 1) : TextView::npos;
        const auto value = close != TextView::npos && close > 1
                               ? platform::EnvironmentVariable(text.substr(1, close - 1))
                               : std::nullopt;
        // The closing sign of an unknown name may open the next one.
        const std::size_t taken = value ? close + 1 : std::min(text.find('%', 1), text.size());
        expanded += value ? TextView(*value) : text.substr(0, taken);
        text.remove_prefix(taken);
    }
    return expanded;
}

}  // namespace rvl
