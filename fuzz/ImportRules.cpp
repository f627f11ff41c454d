#include "fuzz/ImportRules.h"

#include "fuzz/StreamRules.h"

namespace cabslot::fuzz {

namespace {

bool goesOn(const std::vector<Bytes>& before, const Bytes& payload) {
    if (payload.empty() || payload.size() != (payload[0] == 0 ? 3U + 15U : 3U + 512U))
        return false;
    if (payload[0] > 6 || payload[1] < 1 || payload[1] > 4)
        return false;
    return payload[0] == 0 || (payload[0] == before.size() && payload[1] == before[0][1] &&
                               payload[2] == before[0][2]);
}

} // namespace

StoredImports importsIn(View stream) {
    StoredImports stored;
    std::vector<Bytes> going;
    for (const StreamEvent& event : eventsOf(stream)) {
        if (!event.isFrame || event.end - event.begin < 7 || stream[event.begin + 4] != 0xE9)
            continue;
        const Bytes payload(stream.begin() + static_cast<std::ptrdiff_t>(event.begin) + 5,
                            stream.begin() + static_cast<std::ptrdiff_t>(event.end) - 2);
        const bool right = goesOn(going, payload);
        if (!right || payload[0] == 0)
            going.clear();
        if (right)
            going.push_back(payload);
        if (going.size() == 7) {
            ++stored.count;
            stored.slots[payload[1] - 1U] = going;
            going.clear();
        }
    }
    return stored;
}

bool holds(const simulator::PedalSlot& slot, const std::vector<Bytes>& payloads) {
    for (std::size_t k = 0; k < slot.block.size(); ++k) {
        const std::size_t high = k < 512 ? 1 : 4; // then the middle bytes', then the low bytes'
        const std::size_t at = 3 + k % 512;
        const std::uint32_t point = payloads[high][at] * 0x10000U +
                                    payloads[high + 1][at] * 0x100U + payloads[high + 2][at];
        if (slot.block[k] != point)
            return false;
    }
    return std::equal(payloads[0].begin() + 3, payloads[0].end(), slot.name.begin()) &&
           slot.factory == (payloads[0][2] != 0);
}

} // namespace cabslot::fuzz
