// Everything that is told and drawn of one IR.
#pragma once

#include "analysis/Findings.h"

#include <string>
#include <vector>

namespace cabslot {

struct IRSummary {
    std::string name;   ///< as it is shown
    std::string origin; ///< what file it came from, such as "WAV, 48000 Hz, 24 bits, 2 channels"
    std::string frames; ///< such as "5000, of which 1024 are used"
    Samples samples{};
    std::vector<Finding> findings;
};

/// `block` is what `file`, which must be loaded, was converted into.
IRSummary summaryOf(const QNIRFile& file, const Block& block, const std::string& name);

/// The same where the file is not at hand: only what the block itself tells is said.
IRSummary summaryOf(const Block& block, const std::string& name, const std::string& origin);

/// The two levels in words.
std::string levelsText(const Samples& samples);

} // namespace cabslot
