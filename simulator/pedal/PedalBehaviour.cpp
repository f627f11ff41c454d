#include "simulator/pedal/PedalBehaviour.h"

#include <algorithm>
#include <array>

namespace cabslot::simulator {

namespace {

constexpr std::array<NamedFault, 11> allFaults{{
    {"corrupt-crc", "every reply has a wrong CRC", &Faults::corruptCrc},
    {"garbage", "five stray bytes before every reply", &Faults::garbage},
    {"split", "replies in reports of at most 7 bytes", &Faults::split},
    {"merge", "an unknown frame runs into every reply", &Faults::merge},
    {"wrong-length", "replies in reports of 63 and of 65 bytes", &Faults::wrongLength},
    {"flood", "100,000 unknown frames after all data", &Faults::flood},
    {"never-confirm", "imports are stored, never confirmed", &Faults::neverConfirm},
    {"confirm-at-once", "imports are confirmed without delay", &Faults::confirmAtOnce},
    {"confirm-early", "imports are confirmed at their first frame", &Faults::confirmEarly},
    {"usb-stall", "with --usb: the endpoint for reports is stalled", &Faults::usbStall},
    {"usb-hold", "with --usb: no report to the pedal is ever taken", &Faults::usbHold},
}};

} // namespace

std::span<const NamedFault> namedFaults() {
    return allFaults;
}

bool setFault(Faults& faults, std::string_view name) {
    const auto found = std::find_if(allFaults.begin(), allFaults.end(),
                                    [name](const auto& fault) { return fault.name == name; });
    if (found == allFaults.end())
        return false;
    faults.*(found->member) = true;
    return true;
}

} // namespace cabslot::simulator
