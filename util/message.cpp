#include "util/message.h"

#include <utility>

#include "util/handle_error.h"
#include "util/text_functions.h"

namespace rvl {
namespace {

constexpr std::size_t kLongSize = 4;

}  // namespace

Text MakeMessage(TextView context, TextView command, TextView params) {
    ErrAssert(context.find('\0') == TextView::npos, "context cannot contain null");
    ErrAssert(command.find('\0') == TextView::npos, "cmd cannot contain null");
    Text message;
    message.reserve(context.size() + command.size() + params.size() + 2);
    message += context;
    message += '\0';
    message += command;
    message += '\0';
    message += params;
    return message;
}

MessageView ViewMessage(TextView message) {
    MessageView view;
    const std::size_t contextEnd = message.find('\0');
    view.context = message.substr(0, contextEnd);
    if (contextEnd == TextView::npos) return view;
    const TextView rest = message.substr(contextEnd + 1);
    const std::size_t commandEnd = rest.find('\0');
    view.command = UpperCase(TrimView(rest.substr(0, commandEnd)));
    if (commandEnd != TextView::npos) view.params = rest.substr(commandEnd + 1);
    return view;
}

Message SplitMessage(Text message) {
    MessageView view = ViewMessage(message);
    Message parts{Text(view.context), std::move(view.command), {}};
    message.erase(0, message.size() - view.params.size());
    parts.params = std::move(message);
    return parts;
}

Text LongToString(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    Text text;
    for (std::size_t i = 0; i < kLongSize; ++i)
        text += static_cast<char>((bits >> (8 * i)) & 0xFF);
    ErrAssert(text.size() == kLongSize, "LongToString: Length must be 4");
    return text;
}

std::int32_t StringToLong(TextView text) {
    ErrAssert(text.size() == kLongSize, "StringToLong: Length must be 4");
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kLongSize; ++i)
        bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])) << (8 * i);
    return static_cast<std::int32_t>(bits);
}

}  // namespace rvl
