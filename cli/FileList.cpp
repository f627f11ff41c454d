#include "cli/FileList.h"

#include "base/PathText.h"
#include "cli/Console.h"
#include "irfile/NameFromPath.h"

#include <filesystem>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

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
            if (!name.starts_with('.') && isWavName(name))
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
