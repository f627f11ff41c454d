// Preset files of any content: judged, put right, judged again; copies in and out of the data area.
//
// Input: whether the content is put right first, a length for the copies, the content.
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

void demandCopies(QNPresetFile& preset, std::uint32_t count) {
    const bool fits = count <= 1536;
    const PresetBuffUnion before = preset.NewPreset;
    Bytes out(std::min(count, 1536U), 0xA5); // just as long as is written
    demand(preset.ReadPresetBufferPresetData(out.data(), count) == fits, "the data have an end");
    demand(fits ? std::equal(out.begin(), out.end(), before.Buff_A.begin() + 512)
                : out == Bytes(out.size(), 0xA5),
           "what is copied out is the data area's start, or nothing");
    demand(preset.WritePresetBufferPresetData(out.data(), count) == fits, "nor is written past it");
    demand(before.Buff_A == preset.NewPreset.Buff_A, "the same bytes go back");
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
    demand(expectedError(preset.NewPreset.Buff_A) == presetGood, "what is stamped is good");
    if (mend)
        content = preset.NewPreset.Buff_A;

    const PresetFinding found = examinePresetBytes(content);
    demand(found.error == (mend ? presetGood : expectedError(content)), "the first fault is told");
    demand(!presetVerdict(found).empty() && presetVerdict(found) != "unknown", "in words");
    demand(found.error == presetWrongLength ||
               std::equal(content.begin(), content.end(), found.image.Buff_A.begin()),
           "the image is the file's");
    if (isInSample(size))
        demandCopies(preset, static_cast<std::uint32_t>(count));
    return 0;
}
