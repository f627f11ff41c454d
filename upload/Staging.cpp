#include "upload/Staging.h"

#include "device/SharedState.h"

#include <algorithm>

namespace cabslot {

namespace {

// SendFileName holds the 15 bytes that are sent, a 0 byte, and blanks that nobody reads.
constexpr std::size_t endOfName = sentNameSize;
constexpr std::uint8_t blank = 0x20;

} // namespace

void stageName(std::int64_t slot, const NameField& name) {
    SendFileName.fill(blank);
    std::ranges::copy(name, SendFileName.begin());
    SendFileName[endOfName] = 0;
    IRNameArr.setName(static_cast<std::size_t>(slot), {SendFileName.data(), endOfName});
}

void recordFactoryFlag(std::int64_t slot, bool factory) {
    const auto index = static_cast<std::size_t>(slot);
    const std::uint8_t flag = factory ? 1 : 0;
    const std::uint8_t text[] = {static_cast<std::uint8_t>('0' + flag)};
    // The text comes first: for a slot that does not exist it aborts before anything is written.
    isInternalIRArray2.setCharacters(index, text);
    isInternalIRArray[index] = flag;
    SendisInternalIR = flag;
}

void stage(std::int64_t slot, const IR& ir) {
    SendisInternalIR = ir.factory ? 1 : 0;
    irdatabuff = ir.block;
    stageName(slot, ir.name);
}

} // namespace cabslot
