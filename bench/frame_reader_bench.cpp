#include <benchmark/benchmark.h>

#include "net/frame_reader.h"

namespace {

constexpr std::size_t kMessageSize = 64;
constexpr std::size_t kReceipt = 8192;

/// A stream of frames that is a whole number of receipts long and begins again where it ends.
rvl::Text FrameStream() {
    const rvl::Text frame = rvl::MakeFrame(rvl::Text(kMessageSize, 'x'));
    rvl::Text stream;
    while (stream.size() % kReceipt != 0 || stream.empty())
        stream += frame;
    return stream;
}

/// Messages of 64 bytes out of receipts of 8192 bytes.
void ExtractFromReceipts(benchmark::State& state) {
    const rvl::Text stream = FrameStream();
    rvl::FrameReader reader;
    std::int64_t messages = 0;
    std::size_t position = 0;
    for (auto _ : state) {
        reader.Receive(rvl::TextView(stream).substr(position, kReceipt), [&](const rvl::Text& message) {
            benchmark::DoNotOptimize(message.data());
            ++messages;
        });
        position = (position + kReceipt) % stream.size();
    }
    state.SetItemsProcessed(messages);
}
BENCHMARK(ExtractFromReceipts);

/// Cost of one message with so many bytes of messages waiting in the buffer.
void ExtractWithWaiting(benchmark::State& state) {
    const rvl::Text frame = rvl::MakeFrame(rvl::Text(kMessageSize, 'x'));
    const auto frames = static_cast<std::size_t>(state.range(0)) / frame.size();
    rvl::Text waiting;
    for (std::size_t count = 0; count < frames; ++count)
        waiting += frame;
    rvl::FrameReader reader;
    for (auto _ : state)
        reader.Receive(waiting, [](const rvl::Text& message) { benchmark::DoNotOptimize(message.data()); });
    state.SetItemsProcessed(static_cast<std::int64_t>(frames) * state.iterations());
}
BENCHMARK(ExtractWithWaiting)->Arg(4096)->Arg(524288);

}  // namespace
