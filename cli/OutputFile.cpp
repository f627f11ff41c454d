#include "cli/OutputFile.h"

#include "base/Files.h"
#include "base/PathText.h"
#include "base/SystemError.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace cabslot {

namespace {

/// Writes to an existing path that is no regular file; returns why that failed, or an empty text.
std::string writeTo(const std::string& path, std::span<const std::uint8_t> bytes) {
    errno = 0;
    std::ofstream out(pathOf(path), std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    out.close();
    return out.good() ? std::string() : systemErrorText(errno);
}

} // namespace

bool writeOutputFile(const std::string& path, std::span<const std::uint8_t> bytes,
                     std::string& why) {
    std::error_code unknown;
    const auto status = std::filesystem::status(pathOf(path), unknown);
    const bool replaces = !exists(status) || is_regular_file(status);
    const std::string failure = replaces ? replaceFile(path, bytes) : writeTo(path, bytes);
    if (failure.empty())
        return true;
    why = path + " cannot be written: " + failure;
    return false;
}

} // namespace cabslot
