// Walks the list of chunks in a RIFF file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// The tag, such as "LIST", of the chunk that contains byte `position`; empty if a chunk starts
/// there or the list ends before it. `file` begins with the RIFF header.
std::string chunkAround(std::span<const std::uint8_t> file, std::size_t position);

} // namespace cabslot
