#include "ui/RememberedSlots.h"

#include "base/VisibleText.h"
#include "device/SharedState.h"
#include "upload/SlotUpload.h"

#include <cstdio>

namespace cabslot {

namespace {

void complain(const std::string& line) {
    std::fprintf(stderr, "cabslot: %s\n", visibleText(line).c_str());
}

} // namespace

RememberedSlots::RememberedSlots(const std::string& pedal) {
    if (!pedal.empty())
        memory_.emplace(pedal, complain);
}

std::optional<SlotRecord> RememberedSlots::remember(std::uint32_t slot, const std::string& file,
                                                    const std::string& replaced) {
    if (!memory_)
        return {};
    const SlotRecord record = recordOf(stagedIR(file), replaced);
    memory_->remember(slot, record);
    return record;
}

std::optional<SlotRecord> RememberedSlots::recall(std::uint32_t slot) {
    return memory_ ? memory_->recall(slot, IRNameArr.at(slot - 1)) : std::nullopt;
}

} // namespace cabslot
