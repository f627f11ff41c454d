// An IR on its way to the pedal, wherever it came from: a file, preparing, what a slot held before.
// It needs no file any more.
#pragma once

#include "base/Pedal.h"

#include <array>
#include <cstdint>
#include <string>

namespace cabslot {

/// The points as they are sent: the low 24 bits of each word, two's complement, 44.1 kHz.
using Block = std::array<std::uint32_t, irPointCount>;

/// A slot's name as it is sent, padded; every byte but 0 is the code of one character.
using NameField = std::array<std::uint8_t, sentNameSize>;

struct IR {
    Block block{};
    NameField name{};
    bool factory = false; ///< one of the pedal's own IRs, with its name of FileNameBuff
    std::string source;   ///< the file it came from; empty: no file
};

} // namespace cabslot
