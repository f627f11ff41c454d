#include "cli/OutputFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace cabslot {

namespace {

bool writeStraight(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    for (const std::uint8_t byte : bytes)
        out.put(static_cast<char>(byte));
    out.close();
    return out.good();
}

} // namespace

bool writeOutputFile(const std::string& path, std::span<const std::uint8_t> bytes,
                     std::string& why) {
    std::error_code unknown;
    const auto status = std::filesystem::status(path, unknown);
    const bool replace = !std::filesystem::exists(status) || is_regular_file(status);
    const std::string target = replace ? path + "." + std::to_string(::getpid()) + ".part" : path;

    errno = 0;
    if (writeStraight(target, bytes) &&
        (!replace || std::rename(target.c_str(), path.c_str()) == 0))
        return true;
    why = path + " cannot be written: " + std::strerror(errno);
    if (replace)
        std::remove(target.c_str());
    return false;
}

} // namespace cabslot
