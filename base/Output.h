// Where an output goes: what stands at its path, found out before anything is written, and writing
// to what is no regular file. Files are written by replaceFile() in base/Files.h. Paths are UTF-8.
//
// Any thread. Failures are returned as text to print after the path and a colon.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace cabslot {

/// A pipe with a reader, a terminal or another character device, opened for writing.
class OutputStream {
public:
    virtual ~OutputStream() = default;

    /// Writes all of `bytes`, however slowly the other side takes them, unless `stops` returns true
    /// meanwhile. Returns why it failed, or an empty text.
    virtual std::string write(std::span<const std::uint8_t> bytes,
                              const std::function<bool()>& stops) = 0;
};

struct OutputPlace {
    std::string whyNot{}; ///< why nothing can be written there; empty if it can
    bool isFile = false;  ///< a regular file is there
    bool isPipe = false;  ///< a named pipe, whose reader may stop taking what is written
    std::unique_ptr<OutputStream> stream{}; ///< what is there instead of one; null if nothing is
};

/// Looks at the path without writing or blocking. A folder that is missing or must not be written,
/// a pipe that no program reads from, a folder, a disk and a socket are refused.
OutputPlace findOutput(const std::string& path);

} // namespace cabslot
