// Files of the memory of slots: what is read is what was written, byte for byte, or nothing.
//
// Input: whether the checksum is put right, a byte that fills the block, then the file without most
// of its block.
#include "base/Fnv1a.h"
#include "fuzz/Fuzzing.h"
#include "memory/SlotRecordFile.h"

#include <string_view>

namespace cabslot::fuzz {
namespace {

constexpr std::size_t blockStart = 16;
constexpr std::size_t textsStart = blockStart + 4 * irPointCount;
constexpr std::string_view pedal = "usb";

std::uint64_t number(View bytes, std::size_t at, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = width; i-- > 0;)
        value = value << 8 | bytes[at + i];
    return value;
}

void appendChecksum(Bytes& file) {
    for (std::uint64_t sum = fnv1a(file), i = 0; i < 8; ++i)
        file.push_back(static_cast<std::uint8_t>(sum >> 8 * i));
}

/// Whether the file, whose checksum is right, is one: a mark and three texts that fill it, the
/// first the pedal.
bool isRecord(View file) {
    const std::string_view all(reinterpret_cast<const char*>(file.data()), file.size() - 8);
    std::size_t at = textsStart;
    for (int text = 0; text < 3; ++text) {
        if (at + 4 > all.size() || number(file, at, 4) > all.size() - at - 4)
            return false;
        at += 4 + number(file, at, 4);
    }
    return at == all.size() && all.starts_with("cabslot1") && number(file, textsStart, 4) == 3 &&
           all.substr(textsStart + 4, 3) == pedal;
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot;
    using namespace cabslot::fuzz;
    Input input(data, size);
    const bool mend = input.byte() != 0;
    const std::uint8_t fill = input.byte();
    const View start = input.bytes(blockStart);
    Bytes file(start.begin(), start.end());
    if (start.size() == blockStart && !input.empty())
        file.resize(textsStart, fill);
    append(file, input.rest());
    if (mend)
        appendChecksum(file);
    const auto record = readRecordFile(file, pedal);
    demand(!mend || record.has_value() == isRecord(file), "just a whole record is read");
    demand(!record || recordFile(pedal, *record) == file, "what is read is what was written");
    return 0;
}
