// The bytes of a WAV file.
#pragma once

#include "irfile/IR.h"

#include <cstdint>
#include <span>
#include <vector>

namespace cabslot {

/// A WAV file, mono, 24 bits, of `samples` (44100 Hz, full scale 1.0, fewer than 2^30).
/// Values beyond full scale are clipped.
std::vector<std::uint8_t> wavBytes(std::span<const float> samples);

/// The same of a block, bit for bit.
std::vector<std::uint8_t> wavBytes(const Block& block);

} // namespace cabslot
