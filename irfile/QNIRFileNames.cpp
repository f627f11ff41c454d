#include "irfile/QNIRFile.h"

#include "device/SharedState.h"

#include <algorithm>
#include <string_view>

namespace cabslot {

namespace {

// SendFileName holds the 15 bytes that are sent, a 0 byte, and blanks that nobody reads.
constexpr std::size_t endOfName = QNIRFile::nameFieldSize;
constexpr std::uint8_t blank = 0x20;

/// Makes the name in SendFileName the display name of `slot`.
void showSentName(std::int64_t slot) {
    IRNameArr.setName(static_cast<std::size_t>(slot), {SendFileName.data(), endOfName});
}

} // namespace

void QNIRFile::copyIRName(std::int64_t slot) const {
    SendFileName = sendField();
    showSentName(slot);
}

void QNIRFile::nullIRName(std::int64_t slot) {
    const std::string name = defaultSlotName(static_cast<std::size_t>(slot) + 1);
    SendFileName.fill(blank);
    std::copy(name.begin(), name.end(), SendFileName.begin());
    SendFileName[endOfName] = 0;
    showSentName(slot);
}

void QNIRFile::sendIsInternalIR(std::int64_t slot) const {
    const auto index = static_cast<std::size_t>(slot);
    const std::uint8_t flag = _isInteralIR ? 1 : 0;
    const std::uint8_t text[] = {static_cast<std::uint8_t>('0' + flag)};
    // The text comes first: for a slot that does not exist it aborts before anything is written.
    isInternalIRArray2.setCharacters(index, text);
    isInternalIRArray[index] = flag;
    SendisInternalIR = flag;
}

std::array<std::uint8_t, QNIRFile::nameFieldSize> QNIRFile::nameField() const {
    const auto whole = sendField();
    std::array<std::uint8_t, nameFieldSize> field{};
    std::copy_n(whole.begin(), nameFieldSize, field.begin());
    return field;
}

/// SendFileName for the loaded file: the name with its terminating 0, then blanks.
std::array<std::uint8_t, 20> QNIRFile::sendField() const {
    std::array<std::uint8_t, 20> field{};
    field.fill(blank);
    for (std::size_t i = 0; i < CharFileNane.size(); ++i) {
        field[i] = static_cast<std::uint8_t>(CharFileNane[i]);
        if (field[i] == 0)
            break;
    }
    field[endOfName] = 0;
    return field;
}

} // namespace cabslot
