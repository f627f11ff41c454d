// Files of sets: what is not refused can be sent, and is written and read again without a change.
//
// Input: a name (a count byte, then that many bytes), then the text of a set. In it a byte 1 stands
// for 4096 characters of Base64, a byte 2 for the name, and a byte 3 for the checksum of both.
#include "base/Crc32.h"
#include "fuzz/Fuzzing.h"
#include "irfile/NameField.h"
#include "irfile/SampleFormat.h"
#include "sets/SetFile.h"

#include <array>

namespace cabslot::fuzz {
namespace {

constexpr std::size_t pointCharacters = 4096;

std::string checksumOf(const std::string& name) {
    Bytes covered(3 * irPointCount); // 'A' is a 0 in Base64
    covered.insert(covered.end(), name.begin(), name.end());
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%08x", static_cast<unsigned>(crc32(covered)));
    return text.data();
}

std::string expanded(View input, const std::string& name) {
    std::string text;
    for (const std::uint8_t byte : input) {
        if (byte == 1)
            text.append(pointCharacters, 'A');
        else if (byte == 2)
            text += name;
        else if (byte == 3)
            text += checksumOf(name);
        else
            text += static_cast<char>(byte);
    }
    return text;
}

void checkSlot(const IR& ir) {
    const std::string name = nameText(ir.name);
    check(std::ranges::all_of(name, [](char c) { return c >= ' ' && c <= '~'; }),
          "names are plain");
    check(ir.factory || name.size() <= wavNameSize, "the pedal can show the name");
    check(std::ranges::all_of(ir.block, [](auto point) { return point <= sampleMask; }), "24 bits");
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot;
    using namespace cabslot::fuzz;
    Input input(data, size);
    const std::string name = input.text();
    const ReadSet read = setIn(expanded(input.rest(), name));
    if (!read)
        return 0;
    for (const auto& ir : read.set)
        if (ir)
            checkSlot(*ir);
    const std::string text = setText(read.set);
    const ReadSet again = setIn(text);
    check(again && setText(again.set) == text, "what was read is written and read again");
    check(exported(read.set).size() <= slotCount, "a file for each slot");
    return 0;
}
