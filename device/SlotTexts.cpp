#include "device/SlotTexts.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace cabslot {

namespace {

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "Fatal error: %s\n", what);
    std::abort();
}

} // namespace

void SlotTexts::clear() {
    const std::lock_guard lock(mutex_);
    count_ = 0;
}

std::size_t SlotTexts::count() const {
    const std::lock_guard lock(mutex_);
    return count_;
}

std::string SlotTexts::at(std::size_t index) const {
    const std::lock_guard lock(mutex_);
    require(index < count_, "a slot's text was read before it was there");
    return {texts_[index].utf8.data(), texts_[index].size};
}

std::array<std::string, slotCount> SlotTexts::all() const {
    std::array<std::string, slotCount> texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts.at(i) = at(i);
    return texts;
}

void SlotTexts::setCharacters(std::size_t index, std::span<const std::uint8_t> codes) {
    const std::lock_guard lock(mutex_);
    require(index <= count_ && index < slotCount, "a slot's text was written past the end");
    Text text;
    for (const std::uint8_t code : codes.first(std::min(codes.size(), maxCharacters))) {
        if (code < 0x80) {
            text.utf8[text.size++] = static_cast<char>(code);
        } else {
            text.utf8[text.size++] = static_cast<char>(0xC0 | (code >> 6));
            text.utf8[text.size++] = static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    texts_[index] = text;
    if (index == count_)
        ++count_;
}

void SlotTexts::setName(std::size_t index, std::span<const std::uint8_t> field) {
    std::array<std::uint8_t, maxCharacters> shown{};
    std::size_t size = 0;
    for (const std::uint8_t code : field.first(std::min(field.size(), maxCharacters))) {
        if (code != 0)
            shown[size++] = code;
    }
    setCharacters(index, {shown.data(), size});
}

} // namespace cabslot
