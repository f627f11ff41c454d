// Files of the memory of slots: what is read is what was written, byte for byte, or nothing.
//
// Input: whether the checksum is corrected, a byte that fills the block, then the file without most
// of its block.
#include "base/Fnv1a.h"
#include "fuzz/Fuzzing.h"
#include "memory/SlotRecordFile.h"

namespace cabslot::fuzz {
namespace {

constexpr std::size_t markEnd = 7; // the version's digit
constexpr std::size_t blockStart = 16;
constexpr std::size_t textsStart = blockStart + 4 * irPointCount;
constexpr std::string_view pedal = "usb";

void appendChecksum(Bytes& file) {
    for (std::uint64_t sum = fnv1a(file), i = 0; i < 8; ++i)
        file.push_back(static_cast<std::uint8_t>(sum >> 8 * i));
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
    const bool firstVersion = file.size() > markEnd && file[markEnd] == '1';
    if (start.size() == blockStart && !input.empty())
        file.resize(textsStart, fill);
    append(file, input.rest());
    if (mend)
        appendChecksum(file);
    const auto record = readRecordFile(file, pedal);
    if (!record)
        return 0;
    const std::vector<std::uint8_t> written = recordFile(pedal, *record);
    check(firstVersion || written == file, "what is read is what was written");
    check(recordFile(pedal, readRecordFile(written, pedal).value()) == written,
          "what was read of an earlier version is kept");
    return 0;
}
