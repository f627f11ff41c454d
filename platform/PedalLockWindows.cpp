// Locks on Windows: a file that only its holder may write, and that the system deletes when the
// holder ends. It says who that is.
#include "base/Files.h"
#include "base/Fnv1a.h"
#include "base/PathText.h"
#include "base/StateFolder.h"
#include "base/VisibleText.h"
#include "platform/PedalLock.h"
#include "platform/RunningProgram.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <sstream>
#include <system_error>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t mostHolderBytes = 300;

class FileLock final : public PedalLock {
public:
    explicit FileLock(HANDLE file) : file_(file) {}
    ~FileLock() override { ::CloseHandle(file_); }

private:
    HANDLE file_;
};

/// A folder is locked by a file in it, a device by one in the user's state folder.
fs::path lockFileOf(const std::string& place) {
    std::error_code failed; // then there is no lock
    if (fs::is_directory(pathOf(place), failed))
        return pathOf(place) / "in-use";
    const fs::path folder = pathOf(userStateFolder()) / "cabslot" / "locks";
    fs::create_directories(folder, failed);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(place.data());
    return folder / std::to_string(fnv1a({bytes, place.size()}));
}

LockHolder written(const fs::path& path) {
    const FileBytes file = readFile(textOf(path), mostHolderBytes);
    LockHolder holder;
    std::istringstream(std::string(file.span().begin(), file.span().end())) >> holder.pid >>
        holder.program;
    holder.program = visibleText(holder.program);
    return holder;
}

} // namespace

LockAttempt lockPedal(const std::string& place) {
    const fs::path path = lockFileOf(place);
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ,
                                      nullptr, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE && ::GetLastError() == ERROR_SHARING_VIOLATION)
        return {.holder = written(path)};
    if (file == INVALID_HANDLE_VALUE)
        return {};
    const std::string text =
        std::to_string(::GetCurrentProcessId()) + " " + textOf(runningProgram().stem());
    DWORD count = 0; // a text that cannot be written only leaves the holder unnamed
    ::WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
    return {.lock = std::make_unique<FileLock>(file)};
}

std::optional<LockHolder> holderOf(const std::string& place) {
    const fs::path path = lockFileOf(place);
    std::error_code failed;
    if (!fs::exists(path, failed))
        return std::nullopt;
    return written(path);
}

} // namespace cabslot
