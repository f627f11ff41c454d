// A file of any size, seen through one megabyte of memory. Any thread, one at a time.
#pragma once

#include "base/InputFile.h"
#include "base/StopCheck.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

class FileWindow {
public:
    static constexpr std::size_t width = 1 << 20; ///< bytes

    /// A file in memory, which must outlive this object.
    explicit FileWindow(std::span<const std::uint8_t> bytes);

    /// The file at `path`. Looks at `stop` before each part that it reads.
    FileWindow(const std::string& path, const StopCheck& stop);

    /// Why nothing more can be read: a clause to print after the path and a colon. Empty: it can.
    const std::string& whyNot() const { return whyNot_; }

    std::uint64_t size() const { return size_; }

    /// The bytes from `position` on, `width` of them, or those up to the file's end; none on
    /// failure. Valid until the next call.
    std::span<const std::uint8_t> from(std::uint64_t position);

    /// The same with `size` (small) bytes, from memory if they are there; fewer at the file's end.
    std::span<const std::uint8_t> at(std::uint64_t position, std::size_t size);

    /// Where `tag` first appears within the first `end` bytes.
    std::optional<std::uint64_t> find(std::string_view tag, std::uint64_t end);

private:
    std::uint64_t afterHole(std::uint64_t position) const;

    InputFile file_;
    StopCheck stop_;
    std::string whyNot_;
    std::uint64_t size_ = 0;
    std::vector<std::uint8_t> buffer_;
    std::span<const std::uint8_t> held_; ///< what is in memory: a part of the file, or all of it
    std::uint64_t heldFrom_ = 0;
};

} // namespace cabslot
