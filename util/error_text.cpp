#include "util/error_text.h"

#include "platform/error.h"
#include "platform/system_message.h"
#include "util/socket_errors.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

Text OnOneLine(Text text) {
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != Text::npos; ++at) {
        text.erase(at, 1);
        text[at] = ' ';
    }
    return text;
}

}  // namespace

Text GetErrorString(std::int32_t number) {
    const TextView socketText = SocketErrorText(number);
    if (!socketText.empty()) return Text(socketText);
    return Trim(OnOneLine(StripTerminator(platform::SystemMessage(number))));
}

void APIError(const Text& text, std::int32_t number) {
    throw Error(number, "Util.APIError",
                text + "API Error " + NumberText(number) + ": " + GetErrorString(number));
}

}  // namespace rvl
