#include "cli/FileList.h"

#include "base/PathText.h"
#include "cli/Console.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

bool isWavName(const std::string& name) {
    constexpr std::string_view ending = ".wav";
    if (name.starts_with('.') || name.size() < ending.size())
        return false;
    return std::equal(ending.begin(), ending.end(), name.end() - ending.size(),
                      [](char wanted, char letter) {
                          return letter == wanted ||
                                 (letter >= 'A' && letter <= 'Z' && letter - 'A' + 'a' == wanted);
                      });
}

void refuse(FileList& list, const std::string& folder, const std::string& why) {
    complain(folder + ": " + why);
    list.complete = false;
}

void addFolder(FileList& list, const fs::path& folder, bool recursive) {
    std::error_code error;
    std::error_code unknown;
    for (auto entry = fs::directory_iterator(folder, error); !error && entry != fs::end(entry);
         entry.increment(error)) {
        const std::string name = textOf(entry->path().filename());
        if (!entry->is_directory(unknown)) {
            if (isWavName(name))
                list.paths.push_back(textOf(entry->path()));
        } else if (recursive && !entry->is_symlink(unknown) && !name.starts_with('.')) {
            addFolder(list, entry->path(), recursive);
        }
    }
    if (error)
        refuse(list, textOf(folder), "the folder cannot be read: " + error.message());
}

} // namespace

FileList listFiles(const std::vector<std::string>& arguments, bool recursive) {
    FileList list;
    std::error_code unknown;
    for (const std::string& argument : arguments) {
        if (!fs::is_directory(pathOf(argument), unknown)) {
            list.paths.push_back(argument);
            continue;
        }
        const std::size_t before = list.paths.size();
        addFolder(list, pathOf(argument), recursive);
        if (list.complete && list.paths.size() == before)
            refuse(list, argument,
                   recursive ? "the folder and its subfolders hold no WAV files"
                             : "the folder holds no WAV files; --recursive searches its "
                               "subfolders too");
    }
    return list;
}

} // namespace cabslot
