// Preset files of any content: read, judged, saved, read again.
//
// Input: what stands at the path, whether the content is put right first, a length for the data
// area's copies, the content.
#include "fuzz/StandIn.h"
#include "preset/QNPresetFile.h"

namespace cabslot::fuzz {
namespace {

constexpr std::int32_t untouchedError = -7;
constexpr std::uint8_t untouchedByte = 0xA5;

std::uint32_t number(View bytes, std::size_t at) {
    return bytes[at] + bytes[at + 1] * 0x100U + bytes[at + 2] * 0x10000U +
           bytes[at + 3] * 0x1000000U;
}

std::uint32_t sumOfData(View bytes) {
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : bytes.subspan(512))
        sum += byte;
    return sum;
}

Bytes mended(Bytes content) {
    content.resize(2048);
    const std::uint32_t sum = sumOfData(content);
    for (std::size_t i = 0; i < 4; ++i) {
        content[4 + i] = i == 0 ? 1 : 0;
        content[8 + i] = 0;
        content[508 + i] = static_cast<std::uint8_t>(sum >> (8 * i));
    }
    return content;
}

/// The error of a file with this content.
std::int32_t expectedError(View content) {
    if (content.size() != 2048)
        return 2;
    if (number(content, 4) != 1)
        return 3;
    if (number(content, 508) != sumOfData(content))
        return 6;
    return number(content, 8) > 0 ? 9 : 0;
}

bool holds(const QNPresetFile& preset, View image) {
    return std::equal(image.begin(), image.end(), preset.NewPreset.Buff_A.begin(),
                      preset.NewPreset.Buff_A.end());
}

void demandCopies(QNPresetFile& preset, std::uint32_t count) {
    const bool fits = count <= 1536;
    const PresetBuffUnion before = preset.NewPreset;
    Bytes out(std::min(count, 1536U), untouchedByte); // just as long as is written
    demand(preset.ReadPresetBufferPresetData(out.data(), count) == fits,
           "the data area has an end");
    demand(fits ? std::equal(out.begin(), out.end(), before.Buff_A.begin() + 512)
                : out == Bytes(out.size(), untouchedByte),
           "what is copied out is the data area's start, or nothing");
    demand(preset.WritePresetBufferPresetData(out.data(), count) == fits, "nor is written past it");
    demand(before.Buff_A == preset.NewPreset.Buff_A, "the same bytes go back");
}

/// Saves what is held over whatever stands at `path` and reads it again.
void demandRoundTrip(QNPresetFile& preset, const std::string& path, bool mustSave) {
    std::int32_t error = untouchedError;
    const bool saved = preset.SavePresetToFilePath(path, &error);
    demand(error == (saved ? untouchedError : 8), "only a failure writes an error");
    demand(saved || !mustSave, "where a file stands one can be saved");
    if (!saved)
        return;
    QNPresetFile again;
    demand(again.ReadFileToPresetPath(path, &error) && error == 0, "what was saved can be read");
    demand(holds(again, preset.NewPreset.Buff_A), "what is read is what was saved");
    demand(expectedError(again.NewPreset.Buff_A) == 0, "what was saved is good");
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot;
    using namespace cabslot::fuzz;
    static StandIn standIn;
    Input input(data, size);
    const auto standing = static_cast<Standing>(input.byte() % static_cast<int>(Standing::count));
    const bool mend = input.byte() != 0;
    const std::size_t count = input.number16();
    const Bytes content = mend ? mended(input.rest()) : input.rest();
    const std::string path = standIn.put(standing, "preset", {content.begin(), content.end()});

    const PresetFinding found = examinePreset(path);
    const std::string verdict = presetVerdict(found);
    demand(!verdict.empty() && (verdict == "good") == (found.error == 0), "it is put into words");
    const bool huge = standing == Standing::hugeFile;
    demand(found.error == (standIn.fileThere() ? expectedError(content)
                           : huge              ? 2
                                               : 1),
           "the first check that fails is told");

    QNPresetFile preset;
    preset.NewPreset.Buff_A.fill(untouchedByte);
    std::int32_t error = untouchedError;
    const bool read = preset.ReadFileToPresetPath(path, &error);
    demand(error == found.error && read == (error == 0), "the class says what was found");
    demand(holds(preset, read ? content : Bytes(presetSize, untouchedByte)),
           "the image is the file's, or as it was");
    demandRoundTrip(preset, path, standIn.fileThere() || huge);
    demandCopies(preset, static_cast<std::uint32_t>(count));
    standIn.clear();
    return 0;
}
