#include "preset/PresetImage.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace cabslot {

static_assert(offsetof(PresetRecord, CheckSum) == 508 && offsetof(PresetRecord, DataStart) == 512);

std::uint32_t PresetBuffUnion::dataSum() const {
    return std::accumulate(buff_S.DataStart.begin(), buff_S.DataStart.end(), std::uint32_t{0});
}

void PresetBuffUnion::stamp() {
    buff_S.FileSize = presetSize;
    buff_S.DeviceID = presetDevice;
    buff_S.PresetVersion = presetLayoutVersion;
    buff_S.CheckSum = dataSum();
}

void ChangeData(const PresetBuffUnion& source, PresetBuffUnion& destination) {
    if (source.buff_S.PresetVersion == presetLayoutVersion)
        destination.Buff_A = source.Buff_A;
}

} // namespace cabslot
