#include "cli/SlotNumbers.h"

#include "base/Pedal.h"

#include <algorithm>

namespace cabslot {

std::string slotNumbers() {
    return "1 to " + std::to_string(slotCount);
}

std::string whyNoSlot(const std::string& slot) {
    for (std::size_t known = 1; known <= slotCount; ++known) {
        if (slot == std::to_string(known))
            return {};
    }
    return "there is no slot " + slot + "; there are " + slotNumbers();
}

std::uint32_t slotOf(const std::string& slot) {
    return static_cast<std::uint32_t>(std::stoul(slot));
}

Reader intoSlots(std::vector<std::uint32_t>& slots) {
    return [&slots](const std::string& slot) {
        std::string why = whyNoSlot(slot);
        if (why.empty())
            slots.push_back(slotOf(slot));
        return why;
    };
}

std::string whyRepeated(std::vector<std::uint32_t> slots) {
    std::ranges::sort(slots);
    const auto twice = std::ranges::adjacent_find(slots);
    if (twice == slots.end())
        return {};
    return "slot " + std::to_string(*twice) + " is named twice";
}

} // namespace cabslot
