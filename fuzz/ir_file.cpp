// IR files of any content and name, to the block and the name that are sent.
//
// Input: the name (a count byte and so many bytes), then the file's content.
#include "device/SharedState.h"
#include "fuzz/IRFileRules.h"
#include "irfile/QNIRFile.h"

namespace cabslot::fuzz {
namespace {

constexpr std::uint32_t untouched = 0xDEADBEEF;
using Block = std::array<std::uint32_t, irPointCount>;

void demandFacts(const QNIRFile& file, const IRFileRules& rules, std::string name) {
    demand(file.isInteralIR() == rules.factory && SendisInternalIR == (rules.factory ? 1 : 0),
           "the factory flag is the file's");
    demand(file.sampleRate() == rules.rate() && file.channelCount() == rules.channels() &&
               file.bitsPerSample() == rules.bits() && file.frameCount() == rules.frames(),
           "what is told of the file is so");
    name.resize(10, ' ');
    name.append(1, '\0').append(4, ' ');
    if (rules.factory)
        name = FileNameBuff[rules.number(7, 1)];
    const auto field = file.nameField();
    demand(std::equal(field.begin(), field.end(), name.begin(), name.end(),
                      [](std::uint8_t one, char other) { return static_cast<char>(one) == other; }),
           "the name is the file's");
}

void demandBlock(QNIRFile& file, const IRFileRules& rules, bool everyPoint) {
    const std::uint32_t bits = rules.bits();
    const bool silent = rules.channels() > 2;
    const bool isFloat = bits == 32 && !silent;
    const bool asItIs = silent || (rules.rate() == 44100 && !isFloat);
    // A float of 2.0 and more at 44.1 kHz is not cut.
    const std::uint32_t largest = rules.rate() == 44100 && isFloat ? 0x7FFFFFFF : 0xFFFFFF;
    Block block;
    block.fill(untouched);
    const bool made = file.GetIRDataBuffer(block);
    demand(made == file.whyRefused().empty(), "there is a reason when there is no block");
    demand(made == ((silent || isFloat || bits == 8 || bits == 16 || bits == 24) &&
                    findRate(rules.rate()) != nullptr),
           "just known kinds are decoded");
    for (std::size_t i = 0; everyPoint && i < block.size(); ++i) {
        demand(made || block[i] == untouched, "a refusal leaves the block alone");
        demand(!made || !asItIs || block[i] == rules.point(i), "the points are the file's");
        demand(!made || block[i] <= largest, "a point has 24 bits");
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
    cabslot::QNIRFile file;
    const bool opened = file.openBytes(rules.content, path);
    demand(opened == rules.opens(name), "just good files are opened");
    demand(opened == file.whyRefused().empty(), "just a refusal has a reason");
    demand(opened || (file.sampleRate() == 0 && file.frameCount() == 0), "and has no more");
    if (opened) {
        demandFacts(file, rules, name);
        demandBlock(file, rules, isInSample(size));
    }
    return 0;
}
