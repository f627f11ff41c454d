// A simulated pedal's options: its timing and its faults.
#pragma once

#include <chrono>
#include <cstddef>
#include <span>
#include <string_view>

namespace cabslot::simulator {

/// What goes wrong; several faults may be on at once.
struct Faults {
    bool corruptCrc = false;    ///< every reply has a wrong CRC
    bool garbage = false;       ///< five stray bytes before every reply
    bool split = false;         ///< at most 7 bytes of a reply in a report
    bool merge = false;         ///< a report holds one frame's end and the reply's start
    bool wrongLength = false;   ///< replies come in reports of 63 and of 65 bytes
    bool flood = false;         ///< 100,000 unknown frames after all data, as fast as possible
    bool neverConfirm = false;  ///< imports are stored but not confirmed
    bool confirmAtOnce = false; ///< imports are confirmed without any delay
    bool confirmEarly = false;  ///< imports are confirmed at their first frame, not the last
    bool usbStall = false;      ///< USB: the endpoint for reports to the pedal is stalled
    bool usbHold = false;       ///< USB: a report to the pedal is never taken
    /// The first connection to send this many reports is cut right after the last of them, once in
    /// the server's lifetime; 0: never.
    std::size_t vanishAfter = 0;
};

/// A fault and the name that switches it on.
struct NamedFault {
    std::string_view name;
    std::string_view meaning; ///< for a help text
    bool Faults::*member;
};

/// All faults except vanishAfter, in the order of the help text.
std::span<const NamedFault> namedFaults();

/// Switches the fault of that name on. False: there is none.
bool setFault(Faults& faults, std::string_view name);

struct PedalBehaviour {
    /// From the last frame of an import to its confirmation. A host may begin to wait for the
    /// confirmation only a second after it has sent that frame.
    std::chrono::milliseconds confirmDelay{1500};
    /// The interval at which all data are sent without a request; 0: never.
    std::chrono::milliseconds announceEvery{0};
    Faults faults;
};

} // namespace cabslot::simulator
