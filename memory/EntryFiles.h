// The files that hold one slot's records, one file for each.
//
// They are named STEM-NUMBER-HASH. A new file gets the next number, and the hash of its bytes keeps
// two programs apart that take the same number, so that no lock is needed: no file is ever changed.
// A file named STEM alone, of an earlier version, is the oldest.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

struct EntryFile {
    std::uint64_t number = 0;
    std::string path;
};

/// The files in `folder` that start with `stem`, newest first. None if the folder cannot be read.
std::vector<EntryFile> entryFiles(const std::string& folder, std::string_view stem);

/// The path for a file that is to be the newest.
std::string newEntryPath(const std::string& folder, std::string_view stem,
                         std::span<const EntryFile> existing, std::span<const std::uint8_t> bytes);

} // namespace cabslot
