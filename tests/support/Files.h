// Folders and files for tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

namespace cabslot::testing {

/// A new folder that is removed with all its files by the destructor.
class TempFolder {
public:
    TempFolder() {
        path_ = std::filesystem::temp_directory_path() /
                ("cabslot-" + std::to_string(std::random_device{}()));
        if (!std::filesystem::create_directory(path_))
            throw std::runtime_error("no temporary folder");
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::string path(const std::string& name) const { return (path_ / name).string(); }

    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream file(path_ / name, std::ios::binary);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file.close();
        if (!file)
            throw std::runtime_error("cannot write " + name);
        return path(name);
    }

private:
    std::filesystem::path path_;
};

/// The bytes of a file; empty if there is none.
inline std::string contentOf(const std::string& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace cabslot::testing
