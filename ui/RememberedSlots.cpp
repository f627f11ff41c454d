#include "ui/RememberedSlots.h"

#include "device/SharedState.h"
#include "ui/Problem.h"

namespace cabslot {

RememberedSlots::RememberedSlots(const std::string& pedal) {
    if (!pedal.empty())
        memory_.emplace(pedal, printProblem);
}

void RememberedSlots::remember(std::uint32_t slot, const SlotRecord& record) {
    if (memory_)
        memory_->remember(slot, record);
}

std::optional<SlotRecord> RememberedSlots::recall(std::uint32_t slot) {
    return memory_ ? memory_->recall(slot, IRNameArr.at(slot - 1)) : std::nullopt;
}

SlotSet RememberedSlots::set() {
    return memory_ ? rememberedSet(*memory_, IRNameArr.all()) : SlotSet();
}

std::optional<SlotRecord> RememberedSlots::undoTarget(std::uint32_t slot) {
    return memory_ ? memory_->undoTarget(slot, IRNameArr.at(slot - 1)) : std::nullopt;
}

std::vector<SlotRecord> RememberedSlots::history(std::uint32_t slot) {
    return memory_ ? memory_->history(slot) : std::vector<SlotRecord>();
}

} // namespace cabslot
