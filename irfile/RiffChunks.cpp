#include "irfile/RiffChunks.h"

#include "irfile/WavLayout.h"

namespace cabslot {

namespace {

constexpr int mostChunks = 100'000; // gigabytes of empty chunks take seconds

} // namespace

std::string chunkAround(FileWindow& file, std::uint64_t position) {
    constexpr std::size_t headerSize = layout::tagSize + layout::chunkSize;
    std::uint64_t start = layout::riffHeaderSize;
    for (int i = 0; i < mostChunks && start < position; ++i) {
        const std::span<const std::uint8_t> header = file.at(start, headerSize);
        if (header.size() < headerSize)
            break;
        const TaggedView chunk(header.data());
        const std::uint64_t end = start + headerSize + chunk.size();
        if (position < end)
            return std::string(chunk.tag());
        start = end + end % 2; // chunks start at even offsets
    }
    return {};
}

} // namespace cabslot
