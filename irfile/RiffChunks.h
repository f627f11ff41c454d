// Walks the list of chunks in a RIFF file.
#pragma once

#include "irfile/FileWindow.h"

#include <cstdint>
#include <string>

namespace cabslot {

/// The tag, such as "LIST", of the chunk that contains byte `position`; empty if a chunk starts
/// there, or if the list ends before it or is endless, as no program writes it. `file` begins with
/// the RIFF header.
std::string chunkAround(FileWindow& file, std::uint64_t position);

} // namespace cabslot
