// A regular file that is read in parts. Paths are UTF-8. Any thread, one at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace cabslot {

class InputFile {
public:
    InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    /// Opens the file at `path`. Anything but a regular file (a folder, a pipe, a device) is
    /// refused without blocking. Returns why that failed, as a clause to print after the path and a
    /// colon, or an empty text.
    std::string open(const std::string& path);

    std::uint64_t size() const { return size_; } ///< bytes, when it was opened

    /// Fills `bytes` from byte `position` on. Fails if the file has become shorter. Returns why
    /// that failed, or an empty text.
    std::string read(std::uint64_t position, std::span<std::uint8_t> bytes) const;

    /// The first byte from `position` on that is not known to be 0: behind a hole in a sparse file,
    /// as far as the system reports it.
    std::uint64_t afterHole(std::uint64_t position) const;

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
    std::uint64_t size_ = 0;
};

} // namespace cabslot
