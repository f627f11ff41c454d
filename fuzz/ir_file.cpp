// IR files of any content and name, up to the block and the name that are sent.
//
// Input: the name (a count byte, then that many bytes), then the file's content.
#include "fuzz/IRFileRules.h"
#include "irfile/IRConversion.h"
#include "irfile/IRFile.h"
#include "irfile/NameField.h"

namespace cabslot::fuzz {
namespace {

constexpr std::uint32_t untouched = 0xDEADBEEF;

void checkFacts(const IRFile& file, const IRFileRules& rules, std::string name) {
    check(file.isFactory() == rules.factory, "the factory flag matches the file");
    check(file.sampleRate() == rules.rate() && file.channelCount() == rules.channels() &&
              file.bitsPerSample() == rules.bits() && file.frameCount() == rules.frames(),
          "rate, channels, bits and frames match the file");
    name.resize(10, ' ');
    name.append(1, '\0').append(4, ' ');
    if (rules.factory)
        name = FileNameBuff[rules.number(7, 1)];
    const NameField field = nameFieldOf(file.name());
    check(std::equal(field.begin(), field.end(), name.begin(), name.end(),
                     [](std::uint8_t one, char other) { return static_cast<char>(one) == other; }),
          "the name matches the path");
}

void checkBlock(const IRFile& file, const IRFileRules& rules, bool everyPoint) {
    const std::uint32_t bits = rules.bits();
    const bool silent = rules.channels() > 2;
    const bool isFloat = bits == 32 && !silent;
    const bool asItIs = silent || (rules.rate() == 44100 && !isFloat);
    // A float of 2.0 or more at 44.1 kHz keeps more than 24 bits.
    const std::uint32_t largest = rules.rate() == 44100 && isFloat ? 0x7FFFFFFF : 0xFFFFFF;
    Block block;
    block.fill(untouched);
    const bool made = file.convertTo(block).empty();
    check(made == ((silent || isFloat || bits == 8 || bits == 16 || bits == 24) &&
                   findRate(rules.rate()) != nullptr),
          "exactly the known formats are decoded");
    for (std::size_t i = 0; everyPoint && i < block.size(); ++i) {
        check(made || block[i] == untouched, "a refusal leaves the block unchanged");
        check(!made || !asItIs || block[i] == rules.point(i), "the points match the file");
        check(!made || block[i] <= largest, "a point fits in 24 bits");
    }
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    Input input(data, size);
    const std::string path = input.text();
    const IRFileRules rules(input.rest());
    const std::string name = nameIn(path);
    const cabslot::IRFile file = cabslot::IRFile::of(rules.content, path);
    const bool opened = file.isOpen();
    check(opened == rules.opens(name), "exactly the valid files are opened");
    check(opened == file.whyRefused().empty(), "exactly the refusals have a reason");
    check(opened || (file.sampleRate() == 0 && file.frameCount() == 0), "or nothing is known");
    if (opened) {
        checkFacts(file, rules, name);
        checkBlock(file, rules, isInSample(size));
    }
    return 0;
}
