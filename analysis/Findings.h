// What is odd about an IR, in words that a guitarist can act on.
#pragma once

#include "analysis/FileFacts.h"
#include "analysis/Samples.h"

#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

enum class FindingKind {
    misplacedTag,    ///< "fmt " or "data" was found inside another chunk
    tooManyChannels, ///< none of them is used
    silent,          ///< nothing but zeros
    eightBits,       ///< such samples do not arrive as they are meant
    beyondFullScale, ///< floats that do not fit and wrap round
    clipped,         ///< neighbours at full scale
    wrapped,         ///< jumps such as samples make that have wrapped round
    claimsMore,      ///< the file claims more frames than it holds
    cutOff,          ///< the file is longer than the pedal's IR
    startsLate,      ///< silence comes first
};

struct Finding {
    FindingKind kind;
    std::string text; ///< a sentence or two
};

/// A finding's name for programs, such as "cut_off".
std::string_view nameOf(FindingKind kind);

/// All that is to be said of a block and the file it was made from, the gravest first.
std::vector<Finding> findingsOf(const Samples& samples, const FileFacts& facts);

} // namespace cabslot
