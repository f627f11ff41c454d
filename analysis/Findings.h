// Finds problems in an IR and describes them so that a guitarist can act on them.
#pragma once

#include "analysis/FileFacts.h"
#include "analysis/Samples.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

enum class FindingKind {
    misplacedTag,    ///< "fmt " or "data" was found inside another chunk
    tooManyChannels, ///< more than two, so none is used
    silent,          ///< nothing but zeros
    almostSilent,    ///< its peak is below almostSilentPeak
    veryQuiet,       ///< its peak is below veryQuietPeak
    eightBits,       ///< the conversion distorts them
    beyondFullScale, ///< floats that are too large and wrap round
    clipped,         ///< neighbouring points at full scale
    wrapped,         ///< jumps like those of wrapped samples
    claimsMore,      ///< the file claims more frames than it holds
    cutOff,          ///< the file is longer than the pedal's IR
    startsLate,      ///< silence comes first
};

inline constexpr double almostSilentPeak = -90; ///< dBFS; what is below is noise, not an IR
inline constexpr double veryQuietPeak = -50;    ///< dBFS

struct Finding {
    FindingKind kind;
    std::string text; ///< a sentence or two
};

/// A finding's name in JSON, such as "cut_off".
std::string_view nameOf(FindingKind kind);
std::optional<FindingKind> findingKind(std::string_view name);

/// Every finding about a block and its file, most serious first.
std::vector<Finding> findingsOf(const Samples& samples, const FileFacts& facts);

} // namespace cabslot
