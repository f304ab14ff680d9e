#pragma once

#include <cstdint>

#include "platform/text.h"

namespace rvl {

/// One unit of every link: the text context + NUL + command + NUL + params.
struct Message {
    Text context;  ///< conversation it belongs to, often empty; no NUL
    Text command;  ///< no NUL
    Text params;   ///< arguments joined with NUL (util/parameters.h)
};

/// The same without copies of context and params, for as long as the text they stand in lives.
struct MessageView {
    TextView context;
    Text command;
    TextView params;
};

/// Raises an error when the context or the command holds a NUL.
Text MakeMessage(TextView context, TextView command, TextView params);

/// Never fails: what has no NUL is all context. The command comes out trimmed and in upper case. Taken by
/// value so that large parameters stay in the buffer they arrived in.
Message SplitMessage(Text message);

MessageView ViewMessage(TextView message);

/// The four bytes of a value, least significant first. StringToLong raises an error for another length.
Text LongToString(std::int32_t value);
std::int32_t StringToLong(TextView text);

}  // namespace rvl
