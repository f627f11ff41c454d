// The list of chunks of a RIFF file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// The tag, such as "LIST", of the chunk whose content byte `position` belongs to; empty when a
/// chunk starts there or the list ends before. `file` begins with the RIFF header.
std::string chunkAround(std::span<const std::uint8_t> file, std::size_t position);

} // namespace cabslot
