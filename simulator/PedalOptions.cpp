#include "simulator/PedalOptions.h"

#include <algorithm>
#include <array>

namespace cabslot::simulator {

namespace {

constexpr std::array<NamedFault, 6> allFaults{{
    {"corrupt-crc", "every reply has a wrong CRC", &Faults::corruptCrc},
    {"garbage", "five stray bytes before every reply", &Faults::garbage},
    {"split", "replies in reports of at most 7 bytes", &Faults::split},
    {"merge", "an unknown frame runs into every reply", &Faults::merge},
    {"never-confirm", "imports are stored, never confirmed", &Faults::neverConfirm},
    {"confirm-at-once", "imports are confirmed without delay", &Faults::confirmAtOnce},
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
