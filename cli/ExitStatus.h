// cabslotctl's exit statuses.
#pragma once

namespace cabslot {

enum class ExitStatus {
    done = 0,         ///< done, and confirmed by the pedal where necessary
    fileRefused = 1,  ///< the file cannot be loaded
    wrongUsage = 2,   ///< wrong arguments, or an output file that cannot be written
    noPedal = 3,      ///< no pedal, or it was lost
    notConfirmed = 4, ///< the pedal is there but did not answer in time
    interrupted = 130 ///< Ctrl-C, as shells report it
};

} // namespace cabslot
