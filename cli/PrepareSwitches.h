// The switches of preparing, for every command that prepares.
#pragma once

#include "arguments/Arguments.h"
#include "prepare/Prepare.h"

#include <string>

namespace cabslot {

class PrepareSwitches {
public:
    /// Adds one switch per step; this object must outlive `arguments`.
    void addTo(Arguments& arguments);

    PrepareOptions options() const;
    bool given() const; ///< any of them, with another value than the usual one

private:
    std::string channel_ = "first";
    bool noResample_ = false;
    double lowCut_ = 0;
    double highCut_ = 0;
    bool noTrim_ = false;
    bool minimumPhase_ = false;
    double fade_ = usualFade;
    std::string level_ = "peak";
};

} // namespace cabslot
