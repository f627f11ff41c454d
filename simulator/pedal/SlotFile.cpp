#include "simulator/pedal/SlotFile.h"

#include "simulator/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <vector>

namespace cabslot::simulator {

namespace {

constexpr std::uint32_t sampleMask = 0xFFFFFF;
constexpr std::size_t flagOffset = blockFileBytes + slotNameSize;

using SlotBytes = std::array<std::uint8_t, slotFileBytes>;

SlotBytes toBytes(const PedalSlot& slot) {
    SlotBytes bytes{};
    for (std::size_t i = 0; i < blockFileBytes; ++i)
        bytes[i] = static_cast<std::uint8_t>(slot.block[i / 4] >> (8 * (i % 4)));
    std::copy(slot.name.begin(), slot.name.end(), &bytes[blockFileBytes]);
    bytes[flagOffset] = slot.factory ? 1 : 0;
    return bytes;
}

PedalSlot fromBytes(const SlotBytes& bytes) {
    PedalSlot slot;
    for (std::size_t i = 0; i < blockFileBytes; ++i)
        slot.block[i / 4] |= (std::uint32_t{bytes[i]} << (8 * (i % 4))) & sampleMask;
    std::copy_n(&bytes[blockFileBytes], slotNameSize, slot.name.begin());
    slot.factory = bytes[flagOffset] != 0;
    return slot;
}

bool fail(std::string& why, const std::string& what, int error) {
    why = what + ": " + std::strerror(error);
    return false;
}

bool readAll(int fd, std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::read(fd, bytes.data(), bytes.size());
        if (count == 0)
            errno = EIO; // shorter than it was a moment ago
        if (count == 0 || (count < 0 && errno != EINTR))
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

bool writeAll(int fd, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return false;
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return true;
}

/// Makes the folder's new entry survive a power cut. The file is in place by now, so a file system
/// that cannot do this is no failure.
void syncFolder(const std::filesystem::path& folder) {
    const FileDescriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd)
        ::fsync(fd.get());
}

bool fillAndRename(const std::string& temporary, int fd, const std::filesystem::path& path,
                   const PedalSlot& slot, std::string& why) {
    if (!writeAll(fd, toBytes(slot)) || ::fsync(fd) != 0)
        return fail(why, "cannot write " + path.string(), errno);
    if (::rename(temporary.c_str(), path.c_str()) != 0)
        return fail(why, "cannot replace " + path.string(), errno);
    return true;
}

} // namespace

std::string shownName(const PedalSlot& slot) {
    std::string text;
    std::size_t shown = 0;
    for (const std::uint8_t byte : slot.name) {
        const bool printable = byte >= 0x20 && byte <= 0x7E;
        text += printable ? static_cast<char>(byte) : '.';
        if (byte != ' ' && byte != 0)
            shown = text.size();
    }
    return text.substr(0, shown);
}

bool readSlotFile(const std::filesystem::path& path, PedalSlot& slot, std::string& why) {
    // Not blocking: what stands there may be a pipe.
    const FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!fd || ::fstat(fd.get(), &status) != 0)
        return fail(why, "cannot read " + path.string(), errno);
    if (!S_ISREG(status.st_mode)) {
        why = path.string() + " is not a file";
        return false;
    }
    if (status.st_size != static_cast<off_t>(slotFileBytes)) {
        why = path.string() + " is not a slot file: it has " + std::to_string(status.st_size) +
              " bytes, a slot file has " + std::to_string(slotFileBytes);
        return false;
    }
    SlotBytes bytes{};
    if (!readAll(fd.get(), bytes))
        return fail(why, "cannot read " + path.string(), errno);
    slot = fromBytes(bytes);
    return true;
}

bool writeSlotFile(const std::filesystem::path& path, const PedalSlot& slot, std::string& why) {
    std::string temporary = path.string() + ".XXXXXX";
    const FileDescriptor fd(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!fd)
        return fail(why, "cannot write in " + path.parent_path().string(), errno);
    if (!fillAndRename(temporary, fd.get(), path, slot, why)) {
        ::unlink(temporary.c_str());
        return false;
    }
    syncFolder(path.parent_path());
    return true;
}

} // namespace cabslot::simulator
