// Preset files of any content: checked, corrected, checked again; copies to and from the data area.
//
// Input: whether the content is corrected first, a length for the copies, the content.
#include "fuzz/Fuzzing.h"
#include "preset/QNPresetFile.h"

namespace cabslot::fuzz {
namespace {

std::uint32_t number(View bytes, std::size_t at) {
    return bytes[at] + bytes[at + 1] * 0x100U + bytes[at + 2] * 0x10000U +
           bytes[at + 3] * 0x1000000U;
}

/// The error of a file with this content.
PresetError expectedError(View content) {
    if (content.size() != 2048)
        return presetWrongLength;
    if (number(content, 4) != 1)
        return presetWrongDevice;
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : content.subspan(512))
        sum += byte;
    if (number(content, 508) != sum)
        return presetWrongCheckSum;
    return number(content, 8) > 0 ? presetUnknownVersion : presetGood;
}

void checkCopies(QNPresetFile& preset, std::uint32_t count) {
    const bool fits = count <= 1536;
    const PresetBuffUnion before = preset.NewPreset;
    Bytes out(std::min(count, 1536U), 0xA5); // exactly as long as what is written
    check(preset.ReadPresetBufferPresetData(out.data(), count) == fits, "no read past the end");
    check(fits ? std::equal(out.begin(), out.end(), before.Buff_A.begin() + 512)
               : out == Bytes(out.size(), 0xA5),
          "the copy is the data area's start, or nothing");
    check(preset.WritePresetBufferPresetData(out.data(), count) == fits, "no write past the end");
    check(before.Buff_A == preset.NewPreset.Buff_A, "writing the same bytes changes nothing");
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot;
    using namespace cabslot::fuzz;
    Input input(data, size);
    const bool mend = input.byte() != 0;
    const std::size_t count = input.number16();
    View content = input.rest();
    QNPresetFile preset;
    std::copy_n(content.begin(), std::min(content.size(), presetSize),
                preset.NewPreset.Buff_A.begin());
    preset.NewPreset.stamp();
    check(expectedError(preset.NewPreset.Buff_A) == presetGood, "a stamped preset is valid");
    if (mend)
        content = preset.NewPreset.Buff_A;

    const PresetFinding found = examinePresetBytes(content);
    check(found.error == (mend ? presetGood : expectedError(content)), "the error is the first");
    check(!presetVerdict(found).empty() && presetVerdict(found) != "unknown", "it has a text");
    check(found.error == presetWrongLength ||
              std::equal(content.begin(), content.end(), found.image.Buff_A.begin()),
          "the image matches the file");
    if (isInSample(size))
        checkCopies(preset, static_cast<std::uint32_t>(count));
    return 0;
}
