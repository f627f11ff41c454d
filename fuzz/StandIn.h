// What may stand at a path when a reader comes to it: a file, or something that is none.
#pragma once

#include "fuzz/Fuzzing.h"
#include "tests/support/Files.h"

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace cabslot::fuzz {

/// makeSeeds.py knows the same numbers.
enum class Standing { file, nothing, folder, pipe, linkToFile, hugeFile, count };

/// A folder where one thing stands at a time. Taken away at the process's end.
class StandIn {
public:
    /// Puts a file called `name` with `content`, or something else, there and returns the path. At
    /// a name that no file can have nothing stands.
    std::string put(Standing standing, const std::string& name, const std::string& content) {
        std::string file = name;
        std::replace(file.begin(), file.end(), '/', ':'); // never out of the folder
        path_ = folder_.path(file);
        named_ = !file.empty() && file != "." && file != ".." &&
                 file.find('\0') == std::string::npos && file.size() < 256;
        fileThere_ = named_ && (standing == Standing::file || standing == Standing::linkToFile);
        if (fileThere_)
            elsewhere_.write("file", content);
        if (named_)
            make(standing);
        return path_;
    }

    /// A file stands where put() said, with put()'s content.
    bool fileThere() const { return fileThere_; }

    void clear() const {
        if (named_)
            std::filesystem::remove(path_);
    }

private:
    void make(Standing standing) const {
        namespace fs = std::filesystem;
        if (standing == Standing::file)
            fs::rename(elsewhere_.path("file"), path_);
        else if (standing == Standing::linkToFile)
            fs::create_symlink(elsewhere_.path("file"), path_);
        else if (standing == Standing::folder)
            fs::create_directory(path_);
        else if (standing == Standing::pipe)
            demand(::mkfifo(path_.c_str(), 0600) == 0, "a pipe can be made");
        else if (standing == Standing::hugeFile)
            fs::resize_file(folder_.write(fs::path(path_).filename(), ""), 5ULL << 30);
    }

    testing::TempFolder folder_;
    testing::TempFolder elsewhere_; ///< where links lead
    std::string path_;
    bool named_ = false;
    bool fileThere_ = false;
};

} // namespace cabslot::fuzz
