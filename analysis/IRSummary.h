// Everything that is reported and drawn about one IR.
#pragma once

#include "analysis/Findings.h"

#include <string>
#include <vector>

namespace cabslot {

struct IRSummary {
    std::string name;   ///< as shown to the user
    std::string origin; ///< the source file, such as "WAV, 48000 Hz, 24 bits, 2 channels"
    std::string frames; ///< such as "5000, of which 1024 are used"
    Samples samples{};
    std::vector<Finding> findings;
};

/// Of an IR file that was not refused.
IRSummary summaryOf(const ReadIR& read);

/// The same with a name of the caller's: `block` is what `file` was converted into.
IRSummary summaryOf(const IRFile& file, const Block& block, const std::string& name);

/// The same without the file: covers only what the block shows.
IRSummary summaryOf(const Block& block, const std::string& name, const std::string& origin);

/// The name that `ir` gets in the pedal, without the blanks around it.
std::string shownName(const IR& ir);

/// The peak and RMS levels as text.
std::string levelsText(const Samples& samples);

} // namespace cabslot
