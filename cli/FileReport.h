// What inspect tells of one file.
#pragma once

#include "analysis/IRSummary.h"
#include "irfile/QNIRFile.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

struct FileReport {
    std::string path{};
    std::string
        title{}; ///< the name as a list shows it; of a refused file what its path would give
    bool refused = false;
    std::string whyRefused{}; ///< a clause to follow the path and a colon

    // The rest is of a file that is not refused.
    bool factory = false;
    std::string name{}; ///< as it is sent; blanks may stand at its end
    std::uint32_t rate = 0;
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;
    std::uint64_t claimedFrames = 0;
    std::uint64_t heldFrames = 0;
    std::uint32_t points = 0;     ///< frames that are decoded at most
    std::optional<double> peak{}; ///< dBFS, of the block; nothing if silent
    std::optional<double> rms{};
    std::vector<Finding> findings{};
    std::uint64_t blockHash = 0; ///< the same for the same block
};

/// `summary` and `block` are what `file`, which was loaded from `path`, was made into.
FileReport reportOn(const QNIRFile& file, const std::string& path, const Block& block,
                    const IRSummary& summary);

/// Reads, converts and judges the file. Any thread.
FileReport inspectFile(const std::string& path);

/// The name as the pedal would get it, and as it shows it.
std::string sentName(const QNIRFile& file);

/// The fields of a file that is not refused, in the order of the documents.
nlohmann::ordered_json fieldsOf(const FileReport& report);

} // namespace cabslot
