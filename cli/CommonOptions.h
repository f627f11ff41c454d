// The options that may stand before or behind every command.
#pragma once

#include <string>

namespace cabslot {

struct CommonOptions {
    std::string pedal;     ///< usb, sim or unix:PATH; already checked
    std::string traceFile; ///< empty: no trace
    bool force = false;    ///< outputs may replace existing files
    double timeout = 5;    ///< seconds to wait for the pedal's data; only of some commands
};

} // namespace cabslot
