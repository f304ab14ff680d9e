#include "net/frame_reader.h"

#include "runtime/log_file.h"
#include "util/message.h"
#include "util/scoped_state.h"

namespace rvl {
namespace {

constexpr std::size_t kLengthSize = 4;

}  // namespace

Text FrameHeader(TextView message) {
    return LongToString(static_cast<std::int32_t>(message.size()));
}

Text MakeFrame(TextView message) {
    return FrameHeader(message) + Text(message);
}

bool FrameReader::Receive(TextView bytes, const Deliver& deliver) {
    if (m_closed) return true;
    m_buffer.Append(bytes);
    if (m_extracting) return true;
    const ScopedFlag extracting(m_extracting);
    Step step = Step::Delivered;
    while (step == Step::Delivered && !m_closed)
        step = ExtractOne(deliver);
    if (step == Step::Broken) Log("Input buffer too large, disconnecting");
    return step != Step::Broken;
}

FrameReader::Step FrameReader::ExtractOne(const Deliver& deliver) {
    if (m_buffer.Size() > kInputBufferLimit) return Step::Broken;
    if (m_buffer.Size() < kLengthSize) return Step::NeedMore;
    const std::int32_t length = StringToLong(m_buffer.Waiting().substr(0, kLengthSize));
    // Nothing can ever satisfy a negative length: such a peer is treated like one that sends too much.
    if (length < 0) return Step::Broken;
    const auto size = static_cast<std::size_t>(length);
    if (m_buffer.Size() < size + kLengthSize) return Step::NeedMore;
    Text message(m_buffer.Waiting().substr(kLengthSize, size));
    m_buffer.Take(kLengthSize + size);
    deliver(std::move(message));
    return Step::Delivered;
}

void FrameReader::Close() {
    m_closed = true;
    m_buffer.Clear();
}

}  // namespace rvl
