#include "preset/PresetImage.h"

#include "base/LittleEndian.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr bool adjoin(PresetField one, PresetField next) {
    return one.offset + one.size == next.offset;
}

static_assert(adjoin(buff_S::FileSize, buff_S::DeviceID) &&
              adjoin(buff_S::DeviceID, buff_S::PresetVersion) &&
              adjoin(buff_S::PresetVersion, buff_S::Reserve) &&
              adjoin(buff_S::Reserve, buff_S::CheckSum) &&
              adjoin(buff_S::CheckSum, buff_S::DataStart) &&
              adjoin(buff_S::DataStart, {presetSize, 0}));

} // namespace

std::uint32_t PresetBuffUnion::number(PresetField field) const {
    return littleEndian(bytes(field));
}

void PresetBuffUnion::setNumber(PresetField field, std::uint32_t value) {
    putLittleEndian(bytes(field), value);
}

std::uint32_t PresetBuffUnion::dataSum() const {
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : bytes(buff_S::DataStart))
        sum += byte;
    return sum;
}

void ChangeData(std::span<const std::uint8_t, presetSize> source,
                std::span<std::uint8_t, presetSize> destination) {
    const PresetField version = buff_S::PresetVersion;
    if (littleEndian(std::span<const std::uint8_t>(source.subspan(version.offset, version.size))) == presetLayoutVersion)
        std::copy(source.begin(), source.end(), destination.begin());
}

} // namespace cabslot
