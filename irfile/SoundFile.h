// A sound as a WAV file.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace cabslot {

/// A WAV file of `samples` (44100 Hz, full scale 1.0, fewer than 2^30): mono, 24 bits. What lies
/// beyond full scale is cut.
std::vector<std::uint8_t> soundFile(std::span<const float> samples);

} // namespace cabslot
