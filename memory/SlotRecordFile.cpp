#include "memory/SlotRecordFile.h"

#include "base/Fnv1a.h"
#include "base/LittleEndian.h"
#include "irfile/FactoryNames.h"
#include "irfile/NameField.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr std::string_view mark = "cabslot2";
constexpr std::string_view firstMark = "cabslot1";
constexpr unsigned confirmedFlag = 1;
constexpr unsigned factoryFlag = 2;
constexpr std::size_t wordSize = 4;
constexpr std::size_t checksumSize = 8;

class Writer {
public:
    std::vector<std::uint8_t> bytes;

    void word(std::uint32_t value) {
        bytes.resize(bytes.size() + wordSize);
        putLittleEndian(std::span(bytes).last(wordSize), value);
    }
    void longWord(std::uint64_t value) {
        word(static_cast<std::uint32_t>(value));
        word(static_cast<std::uint32_t>(value >> 32));
    }
    void characters(std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); }
    void text(std::string_view text) {
        word(static_cast<std::uint32_t>(text.size()));
        characters(text);
    }
};

/// Reads values from the front. Reading past the end returns nothing and clears `good`.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

    bool good = true;

    std::uint32_t word() { return littleEndian(take(wordSize)); }
    std::uint64_t longWord() {
        const std::uint64_t low = word();
        return low | std::uint64_t{word()} << 32;
    }
    std::string characters(std::size_t count) {
        const auto bytes = take(count);
        return {bytes.begin(), bytes.end()};
    }
    std::string text() { return characters(word()); }
    bool atEnd() const { return rest_.empty(); }

private:
    std::span<const std::uint8_t> take(std::size_t count) {
        good = good && count <= rest_.size();
        if (!good)
            return {};
        const auto taken = rest_.first(count);
        rest_ = rest_.subspan(count);
        return taken;
    }

    std::span<const std::uint8_t> rest_;
};

Finding findingFrom(Reader& reader) {
    const auto kind = findingKind(reader.text());
    reader.good = reader.good && kind;
    return {kind.value_or(FindingKind{}), reader.text()};
}

/// Reads what follows the pedal's name.
void readRest(Reader& reader, SlotRecord& record) {
    std::ranges::copy(reader.characters(record.ir.name.size()), record.ir.name.begin());
    const std::string flags = reader.characters(1);
    const unsigned bits = flags.empty() ? 0 : static_cast<unsigned char>(flags.front());
    reader.good = reader.good && bits <= (confirmedFlag | factoryFlag);
    record.confirmed = (bits & confirmedFlag) != 0;
    record.ir.factory = (bits & factoryFlag) != 0;
    record.ir.source = reader.text();
    record.replaced = reader.text();
    for (std::uint32_t count = reader.word(); reader.good && count > 0; --count)
        record.findings.push_back(findingFrom(reader));
}

/// The same for a file of an earlier version, which holds the name as it was shown.
void readFirstVersionsRest(Reader& reader, SlotRecord& record) {
    const std::string name = reader.text();
    record.ir.source = reader.text();
    record.ir.factory = std::ranges::find(FileNameBuff, name) != FileNameBuff.end();
    const bool fromWav = !record.ir.factory && !record.isClear();
    record.ir.name = fromWav ? nameFieldOf(name) : paddedNameField(name);
}

} // namespace

std::vector<std::uint8_t> recordFile(std::string_view pedal, const SlotRecord& record) {
    Writer file;
    file.characters(mark);
    file.longWord(static_cast<std::uint64_t>(record.time.time_since_epoch().count()));
    std::ranges::for_each(record.ir.block, [&](std::uint32_t point) { file.word(point); });
    file.text(pedal);
    file.bytes.insert(file.bytes.end(), record.ir.name.begin(), record.ir.name.end());
    file.bytes.push_back(static_cast<std::uint8_t>((record.confirmed ? confirmedFlag : 0) |
                                                   (record.ir.factory ? factoryFlag : 0)));
    file.text(record.ir.source);
    file.text(record.replaced);
    file.word(static_cast<std::uint32_t>(record.findings.size()));
    for (const Finding& finding : record.findings) {
        file.text(nameOf(finding.kind));
        file.text(finding.text);
    }
    file.longWord(fnv1a(file.bytes));
    return file.bytes;
}

std::optional<SlotRecord> readRecordFile(std::span<const std::uint8_t> file,
                                         std::string_view pedal) {
    if (file.size() < checksumSize ||
        Reader(file.last(checksumSize)).longWord() != fnv1a(file.first(file.size() - checksumSize)))
        return {};
    Reader reader(file.first(file.size() - checksumSize));
    const std::string found = reader.characters(mark.size());
    SlotRecord record;
    record.time = std::chrono::sys_seconds(
        std::chrono::seconds(static_cast<std::int64_t>(reader.longWord())));
    std::ranges::generate(record.ir.block, [&] { return reader.word(); });
    const bool same = reader.text() == pedal;
    if (found == firstMark)
        readFirstVersionsRest(reader, record);
    else
        readRest(reader, record);
    const bool known = found == mark || found == firstMark;
    if (!known || !same || !reader.good || !reader.atEnd())
        return {};
    return record;
}

} // namespace cabslot
