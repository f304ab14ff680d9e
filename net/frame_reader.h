#pragma once

#include <cstdint>
#include <functional>

#include "net/byte_queue.h"

namespace rvl {

/// Characters that may wait in a connection's input buffer; one more ends the connection.
inline constexpr std::size_t kInputBufferLimit = 524288;

/// What stands before a message in a frame of the TCP links: its length, 4 bytes, least significant first.
Text FrameHeader(TextView message);

/// Header and message.
Text MakeFrame(TextView message);

/// Takes complete messages out of the bytes received on one TCP connection, in time linear in their number.
class FrameReader {
 public:
    using Deliver = std::function<void(Text message)>;

    /// Appends received bytes and delivers every complete message, also the empty one. Bytes that arrive
    /// while a message is being handled (a handler may let events run) wait for the outer call, so messages
    /// never overtake each other. False when the connection has to end: too much is waiting, or a length is
    /// negative; this is logged.
    bool Receive(TextView bytes, const Deliver& deliver);

    /// Gives back the memory of an empty buffer; for the owner's regular tick.
    void ReleaseRoom() { m_buffer.ReleaseRoom(); }

    /// Discards what is waiting and delivers nothing more; a running Receive ends after its current message.
    void Close();

 private:
    enum class Step { Delivered, NeedMore, Broken };
    Step ExtractOne(const Deliver& deliver);

    ByteQueue m_buffer;
    bool m_extracting = false;
    bool m_closed = false;
};

}  // namespace rvl
