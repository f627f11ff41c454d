// base/Output.h on Windows.
#include "base/Output.h"
#include "base/PathText.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fstream>
#include <system_error>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

// A device such as NUL or CON. A pipe that nobody serves cannot be opened, so nothing blocks.
class DeviceStream final : public OutputStream {
public:
    explicit DeviceStream(const std::string& path) : out_(pathOf(path), std::ios::binary) {}

    std::string write(std::span<const std::uint8_t> bytes,
                      const std::function<bool()>& /*stops*/) override {
        out_.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return out_.flush() ? std::string() : "the device does not take it";
    }

private:
    std::ofstream out_;
};

/// Whether the name stands for a device, such as NUL, which is in every folder.
bool isDevice(const fs::path& path) {
    const HANDLE handle = ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const DWORD type = ::GetFileType(handle);
    ::CloseHandle(handle);
    return type == FILE_TYPE_CHAR || type == FILE_TYPE_PIPE;
}

} // namespace

OutputPlace findOutput(const std::string& path) {
    OutputPlace place;
    std::error_code unknown;
    const fs::path target = pathOf(path);
    const fs::path folder = target.parent_path();
    if (path.empty() || path.find('\0') != std::string::npos) {
        place.whyNot = "it has no name";
    } else if (isDevice(target)) {
        place.stream = std::make_unique<DeviceStream>(path);
    } else if (fs::is_directory(target, unknown) || !target.has_filename()) {
        place.whyNot = "it is a folder";
    } else if (!folder.empty() && !fs::is_directory(folder, unknown)) {
        place.whyNot = "there is no such folder";
    } else {
        place.isFile = fs::exists(target, unknown);
    }
    return place;
}

} // namespace cabslot
