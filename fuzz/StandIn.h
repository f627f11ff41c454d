// What may stand at a path when a reader comes to it: a file, or any of the things that are none.
#pragma once

#include "fuzz/Fuzzing.h"
#include "tests/support/Files.h"

#include <string>

namespace cabslot::fuzz {

/// makeSeeds.py knows the same numbers.
enum class Standing {
    file,
    nothing,
    folder,
    pipe,
    socket,
    device,
    linkToFile,
    linkToNothing,
    linkToItself,
    behindFile, ///< the path goes on behind a file's name
    hugeFile,   ///< 5 GiB, all of it holes
    count,
};

/// A folder in memory where one thing stands at a time. Taken away at the process's end.
class StandIn {
public:
    /// Puts `content` into a file called `name`, or something else there, and returns the path. A
    /// name that no file can have is where nothing stands.
    std::string put(Standing standing, const std::string& name, const std::string& content);

    /// A file stands where put() said, with put()'s content.
    bool fileThere() const { return fileThere_; }

    /// Takes away what put() has put.
    void clear();

private:
    void make(Standing standing, const std::string& content);
    std::string realFile() const { return elsewhere_.path("file"); }
    void makeFile(const std::string& path, const std::string& content);

    testing::TempFolder folder_;
    testing::TempFolder elsewhere_; ///< where links lead
    std::string path_;
    bool named_ = false; ///< path_ has a name that something can stand at
    bool fileThere_ = false;
};

} // namespace cabslot::fuzz
