#include "preset/PresetCheck.h"

#include "base/Files.h"

#include <algorithm>
#include <utility>

namespace cabslot {

namespace {

PresetError check(const PresetBuffUnion& image) {
    if (image.buff_S.DeviceID != presetDevice)
        return presetWrongDevice;
    if (image.buff_S.CheckSum != image.dataSum())
        return presetWrongCheckSum;
    if (image.buff_S.PresetVersion > presetLayoutVersion)
        return presetUnknownVersion;
    return presetGood;
}

std::string lengthRemark(std::size_t length) {
    const std::string right = std::to_string(presetSize);
    return (length > presetSize ? "more than " + right : std::to_string(length)) +
           " bytes long; a preset is " + right;
}

} // namespace

PresetFinding examinePreset(const std::string& path) {
    FileBytes file = readFile(path, presetSize + 1); // one more, to detect a longer file
    if (file.bytes)
        return examinePresetBytes(file.span());
    PresetFinding unreadable;
    unreadable.error = presetUnreadable;
    unreadable.whyUnreadable = std::move(file.whyNot);
    return unreadable;
}

PresetFinding examinePresetBytes(std::span<const std::uint8_t> bytes) {
    PresetFinding found;
    found.length = bytes.size();
    if (found.length != presetSize) {
        found.error = presetWrongLength;
    } else {
        std::ranges::copy(bytes, found.image.Buff_A.begin());
        found.error = check(found.image);
    }
    return found;
}

std::string presetVerdict(const PresetFinding& found) {
    const PresetRecord& record = found.image.buff_S;
    switch (found.error) {
    case presetGood:
        return "good";
    case presetUnreadable:
        return "it cannot be read: " + found.whyUnreadable;
    case presetWrongLength:
        return "it is " + lengthRemark(found.length);
    case presetWrongDevice:
        return "it is for the device " + std::to_string(record.DeviceID) + "; this pedal's is " +
               std::to_string(presetDevice);
    case presetWrongCheckSum:
        return "its checksum is " + std::to_string(record.CheckSum) + "; its data add up to " +
               std::to_string(found.image.dataSum());
    case presetUnknownVersion:
        return "its layout is of version " + std::to_string(record.PresetVersion) +
               "; only version " + std::to_string(presetLayoutVersion) + " is known";
    case presetNotSaved:
        break; // reading never ends with this
    }
    return "unknown";
}

} // namespace cabslot
