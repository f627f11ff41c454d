// From a WAV file in memory to 1024 points at 44.1 kHz: Cabslot against libsndfile and
// libsamplerate.
//
// Both start from the same bytes, read the header, decode the first channel and end with 1024
// 24-bit integers; libsamplerate interpolates linearly, like Cabslot. The names are
// conversion/RATE/BITS/LIBRARY.
#include "irfile/IRConversion.h"
#include "irfile/IRFile.h"

#include <benchmark/benchmark.h>
#include <samplerate.h>
#include <sndfile.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

using cabslot::irPointCount;
using cabslot::irWorkCount;
using Block = std::array<std::uint32_t, irPointCount>;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t frameCount = 2300; // more than any rate uses
constexpr double fullScale = 8388608;

void append(Bytes& bytes, std::uint32_t value, unsigned width) {
    for (unsigned shift = 0; shift < 8 * width; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

void append(Bytes& bytes, std::string_view tag) {
    for (const char character : tag)
        bytes.push_back(static_cast<std::uint8_t>(character));
}

/// A mono file that resembles an impulse response.
Bytes makeWav(std::uint32_t rate, std::uint32_t bits) {
    const std::uint32_t width = bits / 8;
    const bool isFloat = bits == 32;
    Bytes bytes;
    append(bytes, "RIFF");
    append(bytes, 36 + frameCount * width, 4);
    append(bytes, "WAVE");
    append(bytes, "fmt ");
    append(bytes, 16, 4);
    append(bytes, isFloat ? 3 : 1, 2);
    append(bytes, 1, 2);
    append(bytes, rate, 4);
    append(bytes, rate * width, 4);
    append(bytes, width, 2);
    append(bytes, bits, 2);
    append(bytes, "data");
    append(bytes, frameCount * width, 4);
    for (std::uint32_t i = 0; i < frameCount; ++i) {
        const float value =
            std::sin(static_cast<float>(i)) * std::exp(-0.01f * static_cast<float>(i));
        const auto sample = static_cast<std::int32_t>(value * static_cast<float>(fullScale));
        append(bytes,
               isFloat ? std::bit_cast<std::uint32_t>(value)
                       : static_cast<std::uint32_t>(sample) >> (24 - bits),
               width);
    }
    return bytes;
}

// libsndfile's virtual I/O on a file in memory.
struct MemoryFile {
    const Bytes& bytes;
    sf_count_t position = 0;
};

MemoryFile& fileOf(void* user) {
    return *static_cast<MemoryFile*>(user);
}

sf_count_t lengthOf(void* user) {
    return static_cast<sf_count_t>(fileOf(user).bytes.size());
}

sf_count_t seek(sf_count_t offset, int whence, void* user) {
    MemoryFile& file = fileOf(user);
    if (whence == SEEK_CUR)
        offset += file.position;
    else if (whence == SEEK_END)
        offset += lengthOf(user);
    return file.position = offset;
}

sf_count_t read(void* to, sf_count_t count, void* user) {
    MemoryFile& file = fileOf(user);
    const sf_count_t taken = std::min(count, lengthOf(user) - file.position);
    std::memcpy(to, file.bytes.data() + file.position, static_cast<std::size_t>(taken));
    file.position += taken;
    return taken;
}

sf_count_t position(void* user) {
    return fileOf(user).position;
}

bool convertWithLibraries(const Bytes& bytes, Block& block) {
    SF_VIRTUAL_IO io = {lengthOf, seek, read, nullptr, position};
    MemoryFile memory{bytes};
    SF_INFO info{};
    SNDFILE* file = sf_open_virtual(&io, SFM_READ, &info, &memory);
    if (file == nullptr)
        return false;
    static std::array<float, irWorkCount> decoded;
    static std::array<float, irPointCount> resampled;
    const double ratio = 44100.0 / info.samplerate;
    const auto wanted = std::min<sf_count_t>(
        irWorkCount, std::llround(static_cast<double>(irPointCount) / ratio) + 6);
    const sf_count_t count = sf_readf_float(file, decoded.data(), wanted);
    sf_close(file);
    const float* points = decoded.data();
    if (info.samplerate != 44100) {
        SRC_DATA data{};
        data.data_in = decoded.data();
        data.data_out = resampled.data();
        data.input_frames = static_cast<long>(count);
        data.output_frames = irPointCount;
        data.src_ratio = ratio;
        if (src_simple(&data, SRC_LINEAR, 1) != 0)
            return false;
        points = resampled.data();
    }
    for (std::size_t i = 0; i < irPointCount; ++i)
        block[i] = static_cast<std::uint32_t>(std::lrint(points[i] * fullScale)) & 0xFFFFFF;
    return true;
}

bool convertWithCabslot(const Bytes& bytes, Block& block) {
    static const std::string path = "Cab.wav";
    return cabslot::IRFile::of(bytes, path).convertTo(block).empty();
}

void run(benchmark::State& state, bool (*convert)(const Bytes&, Block&), std::uint32_t rate,
         std::uint32_t bits) {
    const Bytes wav = makeWav(rate, bits);
    Block block{};
    for ([[maybe_unused]] auto _ : state) {
        if (!convert(wav, block))
            state.SkipWithError("the file was refused");
        benchmark::DoNotOptimize(block.data());
        benchmark::ClobberMemory();
    }
}

const bool registered = [] {
    for (const std::uint32_t rate : {44100u, 48000u, 88200u, 96000u})
        for (const std::uint32_t bits : {8u, 16u, 24u, 32u}) {
            const std::string row =
                "conversion/" + std::to_string(rate) + "/" + std::to_string(bits);
            benchmark::RegisterBenchmark((row + "/ours").c_str(), run, convertWithCabslot, rate,
                                         bits);
            benchmark::RegisterBenchmark((row + "/theirs").c_str(), run, convertWithLibraries, rate,
                                         bits);
        }
    return true;
}();

} // namespace
