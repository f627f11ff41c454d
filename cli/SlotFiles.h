// The arguments SLOT FILE SLOT FILE ...
#pragma once

#include "arguments/Arguments.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cabslot {

class SlotFiles {
public:
    struct Pair {
        std::uint32_t slot; ///< 1 to 4
        std::string file;
    };

    /// Adds them to a command's arguments, which write into this object.
    void addTo(Arguments& arguments);

    std::string whatIsWrong() const; ///< a message about usage, or an empty text
    std::vector<Pair> pairs() const; ///< only if nothing is wrong

private:
    std::string slot_;
    std::string file_;
    std::vector<std::string> more_; ///< slot, file, slot, file ...
};

} // namespace cabslot
