// From a file's sample bytes to the pedal's block. Changes nothing but what is passed in.
#pragma once

#include "irfile/IR.h"
#include "irfile/IRConversion.h"
#include "irfile/SampleDecoding.h"
#include "irfile/WavLayout.h"

#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

/// The frames that a "data" chunk claims; `format` has at least one channel and 8 bits.
std::uint32_t framesIn(const DATA_BLOCK& data, const WAVE_FORMAT& format);

/// Converts the first channel of at most `frames` frames. `points` is room to work in. Returns why
/// that is impossible, and leaves `destination` untouched, or an empty text.
std::string convertWav(const WAVE_FORMAT& format, std::uint32_t frames, SampleBytes samples,
                       std::span<std::uint32_t, irWorkCount> points,
                       std::span<std::uint32_t, irPointCount> destination);

/// Takes over a factory IR file's points; missing ones are 0.
void decodeFactory(SampleBytes samples, std::span<std::uint32_t, irPointCount> destination);

std::string whyBitsRefused(std::uint16_t bits);

} // namespace cabslot
