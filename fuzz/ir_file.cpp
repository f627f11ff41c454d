// IR files of any content and name, from the path to the block and the name that are sent.
//
// Input: what stands at the path, the name (two bytes' count and so many bytes), the file's
// content.
#include "device/SharedState.h"
#include "fuzz/StandIn.h"
#include "irfile/FactoryNames.h"
#include "irfile/QNIRFile.h"

#include <string_view>

namespace cabslot::fuzz {
namespace {

constexpr std::uint32_t untouched = 0xDEADBEEF;
constexpr std::uint32_t largestPoint = 0xFFFFFF;
constexpr std::uint32_t largestFloatPoint = 0x7FFFFFFF; // 2.0 and more are not cut
constexpr std::size_t longestName = 300;                // bytes; the system takes 255
constexpr std::string_view extension = ".wav";

using Block = std::array<std::uint32_t, irPointCount>;

/// A file as the tests of this target see it.
struct Expected {
    std::string content;
    std::size_t fmt, data; ///< where the tags stand
    bool factory;

    explicit Expected(std::string bytes)
        : content(std::move(bytes)), fmt(find("fmt ")), data(find("data")),
          factory(content.starts_with("VadelIR")) {}

    std::size_t find(std::string_view tag) const { return content.find(tag); }
    /// Bytes that the file does not have are 0.
    std::uint32_t number(std::size_t at, std::size_t width) const {
        std::uint32_t value = 0;
        for (std::size_t i = width; i-- > 0;)
            value = value << 8 |
                    (at + i < content.size() ? static_cast<std::uint8_t>(content[at + i]) : 0U);
        return value;
    }
    std::uint32_t channels() const { return factory ? 1 : number(fmt + 10, 2); }
    std::uint32_t rate() const { return factory ? 44100 : number(fmt + 12, 4); }
    std::uint32_t bits() const { return factory ? 24 : number(fmt + 22, 2); }

    /// `name` is the one made from the path.
    bool opens(std::string_view name) const {
        if (content.size() < 12)
            return false;
        if (factory)
            return number(7, 1) < factoryNameCount;
        const bool plain = std::all_of(name.begin(), name.end(),
                                       [](char letter) { return letter >= ' ' && letter <= '~'; });
        return content.starts_with("RIFF") && content.compare(8, 4, "WAVE") == 0 &&
               fmt < content.size() && fmt + 24 <= content.size() && data < content.size() &&
               data + 8 <= content.size() && channels() > 0 && bits() >= 8 && plain;
    }

    /// Of a file that is taken as it is: factory, or integers at 44.1 kHz.
    std::uint32_t point(std::size_t i) const {
        const std::size_t width = bits() / 8;
        const std::size_t start = factory ? 512 : data + 8;
        const bool silent = channels() > 2 || (!factory && i >= frames());
        return silent ? 0 : number(start + i * width * channels(), width) << (24 - bits());
    }
    std::size_t factoryFrames() const {
        return content.size() <= 512 ? 0 : std::min<std::size_t>((content.size() - 512) / 3, 1024);
    }
    std::uint32_t frames() const { return number(data + 4, 4) / (bits() / 8 * channels()); }
};

std::string nameByPieces(std::string_view file) {
    std::vector<std::string> pieces(1);
    for (; !file.empty(); file.remove_prefix(file.starts_with(extension) ? extension.size() : 1)) {
        if (file.starts_with(extension))
            pieces.emplace_back();
        else
            pieces.back() += file.front();
    }
    if (pieces.size() < 3)
        return pieces.front();
    std::string name;
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i)
        name.append(pieces[i]).append(extension);
    return name;
}

void demandRefused(QNIRFile& file) {
    demand(!file.whyRefused().empty(), "a refusal has a reason");
    demand(file.heldBytes() == 0, "a refusal holds no memory");
    demand(file.sampleRate() == 0 && file.frameCount() == 0, "nothing is told of a refused file");
}

void demandOpened(const QNIRFile& file, const Expected& expected, std::string name) {
    demand(file.whyRefused().empty(), "a success has no reason against it");
    demand(file.isInteralIR() == expected.factory && SendisInternalIR == (expected.factory ? 1 : 0),
           "the factory flag is the file's");
    demand(file.sampleRate() == expected.rate() && file.channelCount() == expected.channels() &&
               file.bitsPerSample() == expected.bits(),
           "what is told of the file is so");
    demand(file.frameCount() == (expected.factory ? expected.factoryFrames() : expected.frames()),
           "so are its frames");
    name.resize(10, ' ');
    name.append(1, '\0').append(4, ' ');
    if (expected.factory)
        name = FileNameBuff[expected.number(7, 1)];
    const auto field = file.nameField();
    demand(std::equal(field.begin(), field.end(), name.begin(), name.end(),
                      [](std::uint8_t one, char other) { return static_cast<char>(one) == other; }),
           "the name is the file's");
}

void demandBlock(QNIRFile& file, const Expected& expected) {
    const bool isFloat = expected.bits() == 32 && expected.channels() <= 2;
    const bool floatAsItIs = expected.rate() == 44100 && isFloat;
    const bool asItIs = expected.channels() > 2 || (expected.rate() == 44100 && !isFloat);
    const bool known = expected.channels() > 2 || isFloat || expected.bits() == 8 ||
                       expected.bits() == 16 || expected.bits() == 24;
    Block block;
    block.fill(untouched);
    const bool made = file.GetIRDataBuffer(block);
    demand(made == file.whyRefused().empty(), "there is a reason when there is no block");
    demand(made == (known && findRate(expected.rate()) != nullptr), "just known kinds are decoded");
    for (std::size_t i = 0; i < block.size(); ++i) {
        demand(made || block[i] == untouched, "a refusal leaves the block alone");
        demand(!made || !asItIs || block[i] == expected.point(i),
               "the block's points are the file's");
        demand(!made || block[i] <= (floatAsItIs ? largestFloatPoint : largestPoint),
               "a point has 24 bits");
    }
    irdatabuff.fill(untouched);
    demand(file.setIrdataBuff() == made && irdatabuff == block, "a second time gives the same");
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    static StandIn standIn;
    Input input(data, size);
    const auto standing = static_cast<Standing>(input.byte() % static_cast<int>(Standing::count));
    const Bytes name = input.bytes(input.number16() % longestName);
    const Bytes content = input.rest();
    const Expected expected({content.begin(), content.end()});
    const std::string path = standIn.put(standing, {name.begin(), name.end()}, expected.content);
    const std::string irName = nameByPieces(path.substr(path.rfind('/') + 1));

    cabslot::QNIRFile file;
    for (int i = 0; i < 2; ++i) { // a second time, over what the first has left
        const bool opened = file.OpenFilePath(path);
        demand(opened == (standIn.fileThere() && expected.opens(irName)), "good files are opened");
        if (opened) {
            demandOpened(file, expected, irName);
            demandBlock(file, expected);
            demand(file.OpenFilePath(path), "it stays a good file");
        } else {
            demandRefused(file);
            std::array<std::uint32_t, cabslot::irPointCount> block{};
            demand(!file.GetIRDataBuffer(block), "no file, no block");
        }
    }
    standIn.clear();
    return 0;
}
