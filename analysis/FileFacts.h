// What a file says beside the block that is made from it.
#pragma once

#include "irfile/QNIRFile.h"

#include <cstdint>
#include <string>

namespace cabslot {

inline constexpr std::uint16_t usableChannels = 2; ///< a file with more gives silence

struct FileFacts {
    std::uint32_t sampleRate = 0; ///< Hz
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;
    std::uint64_t claimed = 0; ///< frames that the file says it has
    std::uint64_t held = 0;    ///< frames that it has
    QNIRFile::MisplacedTag misplaced{};
    std::size_t frames = 0;    ///< of the held ones, those that were looked at
    bool goesOn = false;       ///< more follows that was not looked at, as in a long recording
    std::size_t used = 0;      ///< of these, the ones the pedal's block is made from; none of more
                               ///< than two channels
    double energy = 0;         ///< of the first channel: the sum of all squares, full scale 1.0
    double energyBehind = 0;   ///< of that, in frames beyond the used ones
    std::size_t beyond = 0;    ///< used samples beyond full scale; float files only
    double largest = 0;        ///< the greatest magnitude among them
    std::size_t noNumbers = 0; ///< used samples that are infinite or not a number
};

/// The facts of a loaded file, as far as it is in memory.
FileFacts factsOf(const QNIRFile& file);

/// How many frames there are and how many are used, such as "5000, of which 1024 are used".
std::string framesText(const FileFacts& facts);

} // namespace cabslot
