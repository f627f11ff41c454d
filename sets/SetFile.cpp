#include "sets/SetFile.h"

#include "base/Base64.h"
#include "base/Crc32.h"
#include "base/Files.h"
#include "base/LittleEndian.h"
#include "base/LowerCase.h"
#include "irfile/FactoryNames.h"
#include "irfile/NameField.h"
#include "irfile/SampleFormat.h"
#include "irfile/SlotName.h"
#include "json/Json.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <utility>
#include <vector>

namespace cabslot {

namespace {

constexpr std::size_t pointSize = sampleBits / 8;
constexpr std::size_t pointBytes = irPointCount * pointSize;
constexpr std::size_t longestSource = 4096; ///< bytes; the longest path on Linux
constexpr std::string_view unknownSlot = "unknown";

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const Block& block) {
    Bytes bytes(pointBytes);
    for (std::size_t i = 0; i < block.size(); ++i)
        putLittleEndian(std::span(bytes).subspan(i * pointSize, pointSize), block[i]);
    return bytes;
}

Block blockOf(const Bytes& bytes) {
    Block block{};
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = littleEndian(std::span(bytes).subspan(i * pointSize, pointSize));
    return block;
}

/// Of the points and the name, in eight hexadecimal digits.
std::string checksumOf(const Bytes& points, const std::string& name) {
    const auto* const first = reinterpret_cast<const std::uint8_t*>(name.data());
    std::array<char, 9> text{};
    std::snprintf(text.data(), text.size(), "%08x",
                  static_cast<unsigned>(crc32({first, name.size()}, crc32(points))));
    return text.data();
}

Json jsonOf(const IR& ir) {
    const Bytes points = bytesOf(ir.block);
    const std::string name = nameText(ir.name);
    return {{"name", name},
            {"factory", ir.factory},
            {"source", ir.source.empty() ? Json() : Json(ir.source)},
            {"points", base64(points)},
            {"checksum", checksumOf(points, name)}};
}

/// Reads one slot's fields. The first that is wrong sets `whyRefused`.
class SlotReader {
public:
    explicit SlotReader(const Json& fields) : fields_(fields) {}

    std::string whyRefused;

    IR ir() {
        const std::string name = text("name");
        const std::string checksum = text("checksum");
        IR ir{.factory = flag("factory"), .source = source()};
        const Bytes points = pointsIn(text("points"));
        if (!whyRefused.empty())
            return {};
        checkName(name, ir.factory);
        if (const std::string computed = checksumOf(points, name); computed != checksum)
            refuse("its checksum is wrong; its points and its name give " + computed);
        ir.block = blockOf(points);
        const bool asDefault = ir.factory || ir.source.empty();
        ir.name = asDefault ? paddedNameField(name) : nameFieldOf(name);
        return ir;
    }

private:
    void refuse(const std::string& why) {
        if (whyRefused.empty())
            whyRefused = why;
    }

    template<typename T>
    T value(const char* name, const char* kind) {
        const Json* const field = fields_.field(name);
        const T* const value = field == nullptr ? nullptr : field->as<T>();
        if (value != nullptr)
            return *value;
        refuse(std::string("its field \"") + name + "\" is missing or not " + kind);
        return {};
    }
    std::string text(const char* name) { return value<std::string>(name, "a text"); }
    bool flag(const char* name) { return value<bool>(name, "true or false"); }

    std::string source() {
        const Json* const field = fields_.field("source");
        if (field != nullptr && field->as<std::nullptr_t>() != nullptr)
            return {};
        std::string source = text("source");
        if (source.empty() || source.size() > longestSource)
            refuse("its source is empty or too long; that of a cleared slot is null");
        return source;
    }

    Bytes pointsIn(const std::string& text) {
        const auto points = fromBase64(text);
        if (!points)
            refuse("its points are not Base64");
        else if (points->size() != pointBytes)
            refuse("its points take " + std::to_string(points->size()) + " bytes, not " +
                   std::to_string(pointBytes) + ": " + std::to_string(irPointCount) +
                   " of 24 bits");
        return points.value_or(Bytes());
    }

    void checkName(const std::string& name, bool factory) {
        if (factory && std::ranges::find(FileNameBuff, name) == FileNameBuff.end())
            refuse("its name is not that of a factory IR");
        else if (const std::string why = checkSlotName(name);
                 !factory && !name.empty() && !why.empty())
            refuse("its name cannot be used: " + why);
    }

    const Json& fields_;
};

/// Adds a slot's IR to the set; returns why it is refused, or an empty text.
std::string readSlot(const Json& json, std::optional<IR>& slot) {
    if (json.as<Json::Fields>() == nullptr) {
        const auto* const text = json.as<std::string>();
        return text != nullptr && *text == unknownSlot ? std::string()
                                                       : "it is neither fields nor \"unknown\"";
    }
    SlotReader reader(json);
    slot = reader.ir();
    return reader.whyRefused;
}

std::string whyVersionRefused(const Json& document) {
    const Json* const version = document.field("version");
    const auto* const number = version == nullptr ? nullptr : version->as<std::int64_t>();
    if (number == nullptr)
        return "it is not a set: it has no version";
    if (*number != setVersion)
        return "it is of version " + std::to_string(*number) + "; only version " +
               std::to_string(setVersion) + " is known";
    return {};
}

} // namespace

bool isSetName(std::string_view path) {
    return path.size() >= setExtension.size() &&
           std::ranges::equal(path.substr(path.size() - setExtension.size()), setExtension, {},
                              lowerCase);
}

std::string setText(const SlotSet& set) {
    Json::List slots;
    for (const auto& ir : set)
        slots.push_back(ir ? jsonOf(*ir) : Json(unknownSlot));
    return documentText({{"version", setVersion}, {"slots", slots}}) + "\n";
}

ReadSet setIn(std::string_view text) {
    const ReadJson read = readJson(text);
    if (!read.whyNot.empty())
        return {.whyRefused = read.whyNot};
    if (std::string why = whyVersionRefused(read.value); !why.empty())
        return {.whyRefused = std::move(why)};
    const Json* const field = read.value.field("slots");
    const auto* const slots = field == nullptr ? nullptr : field->as<Json::List>();
    if (slots == nullptr)
        return {.whyRefused = "it is not a set: it has no list of slots"};
    if (slots->size() != slotCount)
        return {.whyRefused = "it has " + std::to_string(slots->size()) + " slots; the pedal has " +
                              std::to_string(slotCount)};
    ReadSet result;
    for (std::size_t i = 0; i < slotCount; ++i) {
        if (const std::string why = readSlot((*slots)[i], result.set.at(i)); !why.empty())
            return {.whyRefused = "slot " + std::to_string(i + 1) + ": " + why};
    }
    return result;
}

ReadSet readSet(const std::string& path) {
    const FileBytes file = readFile(path, longestSetFile);
    if (!file.bytes)
        return {.whyRefused = file.whyNot};
    if (file.fileSize > longestSetFile)
        return {.whyRefused = "it is too long for a set: " + std::to_string(file.fileSize) +
                              " bytes; a set has at most " + std::to_string(longestSetFile)};
    return setIn({reinterpret_cast<const char*>(file.bytes.get()), file.size});
}

} // namespace cabslot
