// What inspect reports about one file.
#pragma once

#include "analysis/IRSummary.h"
#include "json/Json.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

struct FileReport {
    std::string path{};
    std::string title{}; ///< the name to display; for a refused file, from its path
    bool refused = false;
    std::string whyRefused{}; ///< a clause to print after the path and a colon

    // The following applies only to files that are not refused.
    bool factory = false;
    std::string name{}; ///< as it is sent, possibly with trailing blanks
    std::uint32_t rate = 0;
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;
    std::uint64_t claimedFrames = 0;
    std::uint64_t heldFrames = 0;
    std::uint32_t points = 0;     ///< the most points that are decoded at this rate
    std::optional<double> peak{}; ///< dBFS, of the block; no value if silent
    std::optional<double> rms{};
    std::vector<Finding> findings{};
    std::uint64_t blockHash = 0; ///< equal for equal blocks
};

/// `summary` is that of `read`, which is not refused.
FileReport reportOn(const ReadIR& read, const IRSummary& summary);

/// Reads, converts and checks the file. Any thread.
FileReport inspectFile(const std::string& path);

/// The JSON fields of a file that is not refused, in the documented order.
Json fieldsOf(const FileReport& report);

} // namespace cabslot
