// Takes the signal to prepare from an IR file.
#pragma once

#include "irfile/IRFile.h"
#include "prepare/Steps.h"

namespace cabslot {

/// The mean of the first `count` channels, as far as the file is in memory. NaN and infinite
/// samples count as 0.
Signal meanOfChannels(const IRFile& file, std::uint16_t count);

} // namespace cabslot
