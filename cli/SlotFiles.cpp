#include "cli/SlotFiles.h"

#include "cli/SlotNumbers.h"

namespace cabslot {

void SlotFiles::addTo(Arguments& arguments) {
    arguments.add({.name = "SLOT",
                   .help = "The user slot, " + slotNumbers(),
                   .reader = into(slot_, whyNoSlot),
                   .required = true});
    arguments.add({.name = "FILE",
                   .help = "A WAV file (44.1, 48, 88.2 or 96 kHz; 8, 16, 24 or 32-bit float) or a "
                           "factory IR file",
                   .reader = into(file_),
                   .required = true});
    arguments.add({.name = "MORE",
                   .help = "Further slots and files, as SLOT FILE SLOT FILE ...",
                   .reader = into(more_),
                   .many = true});
}

std::vector<SlotFiles::Pair> SlotFiles::pairs() const {
    std::vector<Pair> all = {{slotOf(slot_), file_}};
    for (std::size_t i = 0; i + 1 < more_.size(); i += 2)
        all.push_back({slotOf(more_[i]), more_[i + 1]});
    return all;
}

std::string SlotFiles::whatIsWrong() const {
    for (std::size_t i = 0; i < more_.size(); i += 2) {
        if (std::string why = whyNoSlot(more_[i]); !why.empty())
            return why;
        if (i + 1 == more_.size())
            return "slot " + more_[i] + " has no file";
    }
    std::vector<std::uint32_t> slots;
    for (const Pair& pair : pairs())
        slots.push_back(pair.slot);
    return whyRepeated(slots);
}

} // namespace cabslot
