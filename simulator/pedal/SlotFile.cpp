#include "simulator/pedal/SlotFile.h"

#include "base/Files.h"
#include "base/LittleEndian.h"
#include "base/PathText.h"

#include <algorithm>
#include <span>

namespace cabslot::simulator {

namespace {

constexpr std::uint32_t sampleMask = 0xFFFFFF;
constexpr std::size_t flagOffset = blockFileBytes + slotNameSize;

constexpr std::size_t wordSize = 4;

using SlotBytes = std::array<std::uint8_t, slotFileBytes>;

SlotBytes toBytes(const PedalSlot& slot) {
    SlotBytes bytes{};
    for (std::size_t i = 0; i < irPointCount; ++i)
        putLittleEndian(std::span(bytes).subspan(wordSize * i, wordSize), slot.block[i]);
    std::copy(slot.name.begin(), slot.name.end(), &bytes[blockFileBytes]);
    bytes[flagOffset] = slot.factory ? 1 : 0;
    return bytes;
}

PedalSlot fromBytes(std::span<const std::uint8_t> bytes) {
    PedalSlot slot;
    for (std::size_t i = 0; i < irPointCount; ++i)
        slot.block[i] = littleEndian(bytes.subspan(wordSize * i, wordSize)) & sampleMask;
    std::copy_n(&bytes[blockFileBytes], slotNameSize, slot.name.begin());
    slot.factory = bytes[flagOffset] != 0;
    return slot;
}

} // namespace

std::string shownName(const PedalSlot& slot) {
    std::string text;
    std::size_t shown = 0;
    for (const std::uint8_t byte : slot.name) {
        const bool printable = byte >= 0x20 && byte <= 0x7E;
        text += printable ? static_cast<char>(byte) : '.';
        if (byte != ' ' && byte != 0)
            shown = text.size();
    }
    return text.substr(0, shown);
}

bool readSlotFile(const std::filesystem::path& path, PedalSlot& slot, std::string& why) {
    const FileBytes file = readFile(textOf(path), slotFileBytes);
    if (!file.bytes) {
        why = "cannot read " + textOf(path) + ": " + file.whyNot;
        return false;
    }
    if (file.fileSize != slotFileBytes) {
        why = textOf(path) + " is not a slot file: it has " + std::to_string(file.fileSize) +
              " bytes, a slot file has " + std::to_string(slotFileBytes);
        return false;
    }
    slot = fromBytes(file.span());
    return true;
}

bool writeSlotFile(const std::filesystem::path& path, const PedalSlot& slot, std::string& why) {
    const std::string failure = replaceFile(textOf(path), toBytes(slot));
    if (failure.empty())
        return true;
    why = "cannot write " + textOf(path) + ": " + failure;
    return false;
}

} // namespace cabslot::simulator
