// The files that arguments stand for: files themselves, and the WAV files in folders.
#pragma once

#include <string>
#include <vector>

namespace cabslot {

struct FileList {
    std::vector<std::string> paths;
    bool complete = true; ///< every folder could be read and held a WAV file; else it was told
};

/// A folder stands for its files named *.wav, in any case, but not for hidden ones; with
/// `recursive` also for those in the folders below, but for links to folders.
FileList listFiles(const std::vector<std::string>& arguments, bool recursive);

} // namespace cabslot
