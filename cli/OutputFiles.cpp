#include "cli/OutputFiles.h"

#include "base/Files.h"
#include "base/LowerCase.h"
#include "base/PathText.h"
#include "cli/Console.h"
#include "irfile/NameFromPath.h"
#include "irfile/SlotName.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace cabslot {

namespace {

namespace fs = std::filesystem;

/// The same file by device and inode, whatever its names.
bool isSameFile(const std::string& one, const std::string& other) {
    std::error_code unknown;
    return fs::equivalent(pathOf(one), pathOf(other), unknown);
}

bool isThere(const std::string& path) {
    std::error_code unknown;
    return fs::exists(fs::symlink_status(pathOf(path), unknown));
}

/// The same for names that are one file where case does not count, as on a FAT stick.
std::string withoutCase(const std::string& path) {
    std::error_code unknown;
    return inLowerCase(textOf(fs::absolute(pathOf(path), unknown).lexically_normal()));
}

std::string cannot(const std::string& path, const std::string& why) {
    return path + " cannot be written: " + why;
}

std::string exists(const std::string& path) {
    return path + " already exists; give another name, or --force to replace it";
}

} // namespace

bool isFolder(const std::string& path) {
    std::error_code unknown;
    if (fs::is_directory(pathOf(path), unknown))
        return true;
    complain(path + " is not a folder; create it first");
    return false;
}

void OutputFiles::addInput(const std::string& path) {
    inputs_.push_back(path);
}

std::string OutputFiles::whyNot(const std::string& path, const OutputPlace& place) const {
    if (!place.whyNot.empty())
        return cannot(path, place.whyNot);
    if (place.stream)
        return {};
    const auto isInput = [&](const std::string& input) { return isSameFile(input, path); };
    if (std::ranges::any_of(inputs_, isInput))
        return path + " is the file itself; give another name";
    const auto isTwice = [&](const Added& other) {
        return withoutCase(other.path) == withoutCase(path) || isSameFile(other.path, path);
    };
    if (std::ranges::any_of(outputs_, isTwice))
        return path + " would be written twice; give the files different names";
    return !replaces_ && isThere(path) ? exists(path) : std::string(); // even a link to nothing
}

void OutputFiles::add(const std::string& path, OutputPlace place, const std::string& whyNot) {
    if (!whyNot.empty()) {
        complain(whyNot);
        mayWrite_ = false;
    }
    outputs_.push_back({path, std::move(place)});
}

void OutputFiles::add(const std::string& path) {
    if (path.empty())
        return;
    OutputPlace place = findOutput(path);
    const std::string why = whyNot(path, place);
    add(path, std::move(place), why);
}

void OutputFiles::addLog(const std::string& path) {
    if (path.empty())
        return;
    OutputPlace place = findOutput(path);
    const std::string why =
        place.isPipe ? cannot(path, "it is not a file but a pipe") : whyNot(path, place);
    add(path, std::move(place), why);
}

const OutputFiles::Added& OutputFiles::addedAs(const std::string& path) const {
    return *std::ranges::find(outputs_, path, &Added::path);
}

std::string OutputFiles::writeOne(const Output& output) const {
    const OutputPlace& place = addedAs(output.path).place;
    if (!place.stream && !replaces_ && isThere(output.path)) // appeared since it was checked
        return exists(output.path);
    const std::string why = place.stream ? place.stream->write(output.bytes, interrupted)
                                         : replaceFile(output.path, output.bytes);
    return why.empty() ? std::string() : cannot(output.path, why);
}

std::string OutputFiles::write(const std::vector<Output>& outputs) const {
    std::vector<const Output*> order; // devices first: what they take cannot be known before
    for (const Output& output : outputs) {
        if (!output.path.empty())
            order.push_back(&output);
    }
    const auto isStream = [this](const Output* output) {
        return addedAs(output->path).place.stream != nullptr;
    };
    std::stable_partition(order.begin(), order.end(), isStream);
    std::vector<std::string> created;
    for (const Output* output : order) {
        if (std::string why = writeOne(*output); !why.empty()) {
            std::error_code unknown;
            for (const std::string& path : created)
                fs::remove(pathOf(path), unknown);
            return why;
        }
        const OutputPlace& place = addedAs(output->path).place;
        if (!place.stream && !place.isFile)
            created.push_back(output->path);
    }
    return {};
}

ExitStatus OutputFiles::writeAndReport(const std::vector<Output>& outputs) const {
    const std::string why = write(outputs);
    if (why.empty())
        return ExitStatus::done;
    complain(why);
    return interrupted() ? ExitStatus::interrupted : ExitStatus::wrongUsage;
}

void warnOfName(const std::string& path) {
    const std::string name = textOf(pathOf(path).filename());
    if (nameProblem(name, {}) == NameProblem::refused)
        complain(path + ": " + whyNameRefused(irNameFromPath(name)) + "; or load it with --name");
}

} // namespace cabslot
