// Compares the receiving side of the codec, on a stream of import-sized frames, with one pass of
// boost::crc over the same bytes.
#include "device/Crc16.h"
#include "device/DataUnpacking.h"
#include "device/Frame.h"
#include "device/ReceiveBuffer.h"
#include "device/SharedState.h"

#include <benchmark/benchmark.h>
#include <boost/crc.hpp>

#include <algorithm>
#include <vector>

namespace {

using namespace cabslot;
using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t frameSize = 522;
constexpr std::size_t checkedStart = frameLengthOffset;
constexpr std::size_t checkedSize = frameSize - 4;
constexpr std::size_t frameCount = 18;
constexpr std::size_t reportData = 63;
constexpr std::uint8_t unknownCommand = 0x42; // not handled, so that only the codec is measured

using BoostCrc = boost::crc_optimal<16, 0x1021, 0, 0xFFFF, false, false>;

std::uint16_t boostCrc(const std::uint8_t* data, std::size_t count) {
    BoostCrc crc;
    crc.process_bytes(data, count);
    return static_cast<std::uint16_t>(crc.checksum());
}

Bytes makeStream() {
    Bytes stream;
    for (std::size_t frame = 0; frame < frameCount; ++frame) {
        Bytes bytes(frameSize);
        for (std::size_t i = 0; i < frameSize; ++i)
            bytes[i] = static_cast<std::uint8_t>((frame * 31 + i * 97) % 251);
        bytes[0] = frameSync1;
        bytes[1] = frameSync2;
        bytes[2] = (frameSize - frameOverhead) & 0xFF;
        bytes[3] = (frameSize - frameOverhead) >> 8;
        bytes[4] = unknownCommand;
        const std::uint16_t crc = boostCrc(bytes.data() + checkedStart, checkedSize);
        bytes[frameSize - 2] = static_cast<std::uint8_t>(crc >> 8);
        bytes[frameSize - 1] = static_cast<std::uint8_t>(crc);
        stream.insert(stream.end(), bytes.begin(), bytes.end());
    }
    return stream;
}

void countBytes(benchmark::State& state, const Bytes& stream) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(stream.size()));
}

template<typename Crc>
void crcOfEveryFrame(benchmark::State& state, Crc crc) {
    const Bytes stream = makeStream();
    for ([[maybe_unused]] auto _ : state)
        for (std::size_t at = 0; at < stream.size(); at += frameSize)
            benchmark::DoNotOptimize(crc(stream.data() + at + checkedStart));
    countBytes(state, stream);
}

void ourCrc(benchmark::State& state) {
    crcOfEveryFrame(state, [](const std::uint8_t* data) {
        return crc16_Count(data, static_cast<std::int32_t>(checkedSize));
    });
}
BENCHMARK(ourCrc)->Name("crc/ours");

void theirCrc(benchmark::State& state) {
    crcOfEveryFrame(state, [](const std::uint8_t* data) { return boostCrc(data, checkedSize); });
}
BENCHMARK(theirCrc)->Name("crc/theirs");

// In the order reports arrive: up to 63 bytes into the ring buffer, and a tick now and then.
void receive(benchmark::State& state) {
    const Bytes stream = makeStream();
    resetSharedState();
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t at = 0; at < stream.size(); at += reportData)
            putRX_buffer(stream.data() + at,
                         static_cast<std::uint32_t>(std::min(reportData, stream.size() - at)));
        DUP_Unpack();
        if (rx_buffer_count != 0 || vaildDataCount != 0)
            state.SkipWithError("the stream was not unpacked");
    }
    countBytes(state, stream);
}
BENCHMARK(receive)->Name("receiving/ours");

void theirCrcAgain(benchmark::State& state) {
    const Bytes stream = makeStream();
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(boostCrc(stream.data(), stream.size()));
    countBytes(state, stream);
}
BENCHMARK(theirCrcAgain)->Name("receiving/theirs");

} // namespace
