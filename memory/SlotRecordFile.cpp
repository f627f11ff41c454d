#include "memory/SlotRecordFile.h"

#include "base/Fnv1a.h"
#include "base/LittleEndian.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr std::string_view mark = "cabslot1";
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

} // namespace

std::vector<std::uint8_t> recordFile(std::string_view pedal, const SlotRecord& record) {
    Writer file;
    file.characters(mark);
    file.longWord(static_cast<std::uint64_t>(record.time.time_since_epoch().count()));
    std::ranges::for_each(record.block, [&](std::uint32_t point) { file.word(point); });
    file.text(pedal);
    file.text(record.name);
    file.text(record.source);
    file.longWord(fnv1a(file.bytes));
    return file.bytes;
}

std::optional<SlotRecord> readRecordFile(std::span<const std::uint8_t> file,
                                         std::string_view pedal) {
    if (file.size() < checksumSize ||
        Reader(file.last(checksumSize)).longWord() != fnv1a(file.first(file.size() - checksumSize)))
        return {};
    Reader reader(file.first(file.size() - checksumSize));
    const bool marked = reader.characters(mark.size()) == mark;
    SlotRecord record;
    record.time = std::chrono::sys_seconds(
        std::chrono::seconds(static_cast<std::int64_t>(reader.longWord())));
    std::ranges::generate(record.block, [&] { return reader.word(); });
    const bool same = reader.text() == pedal;
    record.name = reader.text();
    record.source = reader.text();
    if (!marked || !same || !reader.good || !reader.atEnd())
        return {};
    return record;
}

} // namespace cabslot
