#include "tools/deployserver/line_breaks.h"

namespace rvl::deployserver {

Text WithLineBreaks(TextView written) {
    Text text;
    for (std::size_t index = 0; index < written.size(); ++index) {
        const TextView pair = written.substr(index, 2);
        const bool escaped = pair == "\\n" || pair == "\\\\";
        if (escaped) ++index;
        if (pair == "\\n")
            text += "\r\n";
        else
            text += pair.front();
    }
    return text;
}

}  // namespace rvl::deployserver
