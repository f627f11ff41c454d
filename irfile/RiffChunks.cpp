#include "irfile/RiffChunks.h"

#include "irfile/WavLayout.h"

namespace cabslot {

std::string chunkAround(std::span<const std::uint8_t> file, std::size_t position) {
    constexpr std::size_t headerSize = layout::tagSize + layout::chunkSize;
    std::size_t start = layout::riffHeaderSize;
    while (start < position && start + headerSize <= file.size()) {
        const TaggedView chunk(file.data() + start);
        const std::size_t end = start + headerSize + chunk.size();
        if (position < end)
            return std::string(chunk.tag());
        start = end + end % 2; // chunks start at even offsets
    }
    return {};
}

} // namespace cabslot
