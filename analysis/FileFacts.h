// Facts about a file that its converted block does not show.
#pragma once

#include "irfile/IRFile.h"

#include <cstdint>
#include <string>

namespace cabslot {

inline constexpr std::uint16_t usableChannels = 2; ///< a file with more gives silence

struct FileFacts {
    std::uint32_t sampleRate = 0; ///< Hz
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;
    std::uint64_t claimed = 0; ///< frames that the file claims
    std::uint64_t held = 0;    ///< frames that it holds
    IRFile::MisplacedTag misplaced{};
    std::size_t frames = 0;    ///< of the held ones, those that were inspected
    bool moreFollows = false;  ///< more frames follow, as in a long recording
    std::size_t used = 0;      ///< of these, those used for the pedal's block; 0 if there are more
                               ///< than two channels
    double energy = 0;         ///< of the first channel: the sum of all squares, full scale 1.0
    double energyBehind = 0;   ///< of that, in frames after the used ones
    std::size_t beyond = 0;    ///< used samples beyond full scale; float files only
    double largest = 0;        ///< the greatest magnitude among them
    std::size_t noNumbers = 0; ///< used samples that are infinite or NaN
};

/// The facts about an open file, as far as it is in memory.
FileFacts factsOf(const IRFile& file);

/// How many frames there are and how many are used, such as "5000, of which 1024 are used".
std::string framesText(const FileFacts& facts);

} // namespace cabslot
