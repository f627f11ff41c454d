// Expands file arguments: files themselves, and the WAV files in folders.
#pragma once

#include <string>
#include <vector>

namespace cabslot {

struct FileList {
    std::vector<std::string> paths;
    bool complete = true; ///< false if a folder held no WAV file or could not be read
};

/// A folder stands for its files named *.wav, in any case, except hidden ones; with `recursive`,
/// also for those in its subfolders, without following links to folders. Reports what went wrong.
FileList listFiles(const std::vector<std::string>& arguments, bool recursive);

} // namespace cabslot
