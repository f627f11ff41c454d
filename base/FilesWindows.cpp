// base/Files.h and base/InputFile.h on Windows. Files are opened without locking, so that an open
// file can be replaced.
#include "base/Files.h"
#include "base/InputFile.h"
#include "base/PathText.h"
#include "base/TemporaryName.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <algorithm>
#include <system_error>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD folderToo = FILE_FLAG_BACKUP_SEMANTICS; // without it a folder is "access denied"
constexpr DWORD mostAtOnce = 1u << 30;
constexpr int mostNames = 100; // attempts to find an unused name

struct HandleCloser {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

Handle openFile(const fs::path& path, DWORD access, DWORD how, DWORD flags) {
    const HANDLE handle =
        ::CreateFileW(path.c_str(), access, shareAll, nullptr, how, flags, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

std::string wordsFor(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return "there is no such file or folder";
    case ERROR_ACCESS_DENIED:
        return "you have no permission, or it is write-protected";
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return "another program has it open";
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
        return "its name or path is not one that Windows allows";
    case ERROR_FILENAME_EXCED_RANGE:
        return "its name or path is too long";
    default:
        return std::system_category().message(static_cast<int>(error));
    }
}

/// Why `path` cannot name any file; empty if it can.
std::string whyNoPath(const std::string& path) {
    if (path.empty())
        return "no file was chosen";
    if (path.find('\0') != std::string::npos)
        return "there is no such file: its path holds a zero byte";
    return {};
}

std::string whyNotOpened(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return "there is no such file";
    case ERROR_ACCESS_DENIED:
        return "you have no permission to read it";
    default:
        return wordsFor(error);
    }
}

/// Why `file` is not a regular file; empty if it is one. A name such as CON opens a device.
std::string whyNotAFile(HANDLE file, BY_HANDLE_FILE_INFORMATION& about) {
    if (::GetFileType(file) == FILE_TYPE_PIPE)
        return "it is not a file but a pipe";
    if (::GetFileType(file) != FILE_TYPE_DISK || !::GetFileInformationByHandle(file, &about))
        return "it is not a file but a device";
    if ((about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return "it is a folder; choose a file in it";
    return {};
}

std::uint64_t sizeOf(const BY_HANDLE_FILE_INFORMATION& about) {
    return std::uint64_t{about.nFileSizeHigh} << 32 | about.nFileSizeLow;
}

DWORD writeAll(HANDLE file, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), mostAtOnce));
        if (!::WriteFile(file, bytes.data(), wanted, &count, nullptr))
            return ::GetLastError();
        bytes = bytes.subspan(count);
    }
    return ::FlushFileBuffers(file) ? ERROR_SUCCESS : ::GetLastError();
}

/// The target of the links that lead to an open file.
fs::path finalPath(HANDLE file, const fs::path& path) {
    std::wstring text(::GetFinalPathNameByHandleW(file, nullptr, 0, 0), L'\0');
    const DWORD length =
        ::GetFinalPathNameByHandleW(file, text.data(), static_cast<DWORD>(text.size()), 0);
    text.resize(std::min<std::size_t>(length, text.size()));
    return text.empty() ? path : fs::path(text);
}

/// Creates a new file in `folder` and sets `path` to it. Null on failure: see GetLastError().
Handle openNew(const fs::path& folder, fs::path& path) {
    for (int i = 0; i < mostNames; ++i) {
        path = folder / temporaryName();
        Handle file = openFile(path, GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
        if (file || ::GetLastError() != ERROR_FILE_EXISTS)
            return file;
    }
    return {};
}

DWORD replaceAt(const fs::path& target, std::span<const std::uint8_t> bytes) {
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    fs::path temporary;
    Handle file = openNew(folder, temporary);
    if (!file)
        return ::GetLastError();
    DWORD error = writeAll(file.get(), bytes);
    file.reset(); // an open file cannot be renamed
    constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (error == ERROR_SUCCESS && !::MoveFileExW(temporary.c_str(), target.c_str(), how))
        error = ::GetLastError();
    if (error != ERROR_SUCCESS)
        ::DeleteFileW(temporary.c_str());
    return error;
}

} // namespace

struct InputFile::Handle {
    cabslot::Handle file;
};

InputFile::InputFile() = default;
InputFile::~InputFile() = default;

std::string InputFile::open(const std::string& path) {
    if (std::string why = whyNoPath(path); !why.empty())
        return why;
    cabslot::Handle file = openFile(pathOf(path), GENERIC_READ, OPEN_EXISTING, folderToo);
    if (!file)
        return whyNotOpened(::GetLastError());
    BY_HANDLE_FILE_INFORMATION about{};
    if (std::string why = whyNotAFile(file.get(), about); !why.empty())
        return why;
    size_ = sizeOf(about);
    handle_ = std::make_unique<Handle>();
    handle_->file = std::move(file);
    return {};
}

std::string InputFile::read(std::uint64_t position, std::span<std::uint8_t> bytes) const {
    while (!bytes.empty()) {
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(position);
        place.OffsetHigh = static_cast<DWORD>(position >> 32);
        DWORD count = 0;
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), mostAtOnce));
        if (!::ReadFile(handle_->file.get(), bytes.data(), wanted, &count, &place) &&
            ::GetLastError() != ERROR_HANDLE_EOF)
            return "it cannot be read: " + wordsFor(::GetLastError());
        if (count == 0)
            return "it changed while it was being read; try again";
        bytes = bytes.subspan(count);
        position += count;
    }
    return {};
}

std::uint64_t InputFile::afterHole(std::uint64_t position) const {
    return position;
}

// Other users cannot read a user's own folders on Windows: FileAccess::ownerOnly changes nothing.
std::string replaceFile(const std::string& path, std::span<const std::uint8_t> bytes,
                        FileAccess /*access*/) {
    if (std::string why = whyNoPath(path); !why.empty())
        return why;
    fs::path target = pathOf(path);
    if (const Handle old = openFile(target, 0, OPEN_EXISTING, folderToo)) {
        BY_HANDLE_FILE_INFORMATION about{};
        if (std::string why = whyNotAFile(old.get(), about); !why.empty())
            return why;
        target = finalPath(old.get(), target);
    }
    const DWORD error = replaceAt(target, bytes);
    return error == ERROR_SUCCESS ? std::string() : wordsFor(error);
}

} // namespace cabslot
