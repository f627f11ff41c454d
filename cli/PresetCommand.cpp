#include "cli/PresetCommand.h"

#include "base/Files.h"
#include "base/PathText.h"
#include "cli/Console.h"
#include "cli/OutputFile.h"
#include "cli/PresetShow.h"
#include "preset/QNPresetFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

namespace cabslot {

namespace {

ExitStatus refuse(const std::string& file, const std::string& why) {
    complain(file + ": " + why);
    return ExitStatus::fileRefused;
}

ExitStatus save(QNPresetFile& preset, const std::string& file) {
    std::int32_t error = presetGood;
    if (preset.SavePresetToFilePath(file, &error))
        return ExitStatus::done;
    complain(file + " cannot be written: " + preset.whyNotSaved());
    return ExitStatus::wrongUsage;
}

/// Saves `preset` with the content of the file `binary` as its data, padded with 0.
ExitStatus saveWithData(QNPresetFile& preset, const std::string& file, const std::string& binary) {
    const FileBytes bytes = readFile(binary, presetDataSize + 1); // one more, to detect a long file
    if (!bytes.bytes)
        return refuse(binary, "it cannot be read: " + bytes.whyNot);
    if (bytes.size > presetDataSize)
        return refuse(binary, "it is more than " + std::to_string(presetDataSize) +
                                  " bytes long; the data area of a preset holds no more");
    std::array<std::uint8_t, presetDataSize> data{};
    std::ranges::copy(bytes.span(), data.begin());
    preset.WritePresetBufferPresetData(data.data(), presetDataSize);
    return save(preset, file);
}

/// A command about one preset file.
class PresetFileCommand : public Command {
protected:
    PresetFileCommand(Arguments& program, const std::string& name, const std::string& description,
                      const std::string& fileDescription = "A preset file")
        : Command(program, name, description) {
        addFile("FILE", file_, fileDescription);
    }

    const std::string& file() const { return file_; }

    ExitStatus read(QNPresetFile& preset) const {
        std::int32_t error = presetGood;
        if (preset.ReadFileToPresetPath(file_, &error))
            return ExitStatus::done;
        return refuse(file_, preset.whyNotRead());
    }

private:
    std::string file_;
};

class PresetVerify final : public Command {
public:
    explicit PresetVerify(Arguments& program)
        : Command(program, "verify", "Check whether each file is a valid preset") {
        arguments().add({.name = "FILE",
                         .help = "Preset files",
                         .reader = into(files_),
                         .required = true,
                         .many = true});
    }

    ExitStatus run() override {
        ExitStatus status = ExitStatus::done;
        for (const std::string& file : files_) {
            const PresetFinding found = examinePreset(file);
            if (found.error == presetGood)
                std::cout << file << ": " << presetVerdict(found)
                          << std::endl; // flushed to keep the order with the error messages
            else
                status = refuse(file, presetVerdict(found));
        }
        return status;
    }

private:
    std::vector<std::string> files_;
};

class PresetNew final : public PresetFileCommand {
public:
    explicit PresetNew(Arguments& program)
        : PresetFileCommand(program, "new", "Create a preset file, all zeros unless data are given",
                            "The file to create") {
        arguments().add({.name = "--data",
                         .help = "The data area, up to 1536 bytes; zeros fill the rest",
                         .reader = into(binary_),
                         .type = "BIN"});
    }

    ExitStatus run() override {
        std::error_code unknown;
        if (std::filesystem::exists(std::filesystem::symlink_status(pathOf(file()), unknown))) {
            complain(file() + " already exists; give a new name, or remove it first");
            return ExitStatus::wrongUsage;
        }
        QNPresetFile preset;
        return binary_ ? saveWithData(preset, file(), *binary_) : save(preset, file());
    }

private:
    std::optional<std::string> binary_;
};

class PresetExport final : public PresetFileCommand {
public:
    explicit PresetExport(Arguments& program)
        : PresetFileCommand(program, "export",
                            "Write a preset's data area, 1536 bytes, to a file") {
        addFile("OUT", out_, "The file to write");
    }

    ExitStatus run() override {
        QNPresetFile preset;
        if (const ExitStatus status = read(preset); status != ExitStatus::done)
            return status;
        std::array<std::uint8_t, presetDataSize> data{};
        preset.ReadPresetBufferPresetData(data.data(), presetDataSize);
        std::string why;
        if (std::error_code unknown;
            std::filesystem::equivalent(pathOf(file()), pathOf(out_), unknown))
            why = out_ + " is the preset itself; give another name";
        else if (writeOutputFile(out_, data, why))
            return ExitStatus::done;
        complain(why);
        return ExitStatus::wrongUsage;
    }

private:
    std::string out_;
};

class PresetImport final : public PresetFileCommand {
public:
    explicit PresetImport(Arguments& program)
        : PresetFileCommand(program, "import", "Replace a preset's data area with a file's bytes") {
        addFile("BIN", binary_, "The data area, up to 1536 bytes; zeros fill the rest");
    }

    ExitStatus run() override {
        QNPresetFile preset;
        if (const ExitStatus status = read(preset); status != ExitStatus::done)
            return status;
        return saveWithData(preset, file(), binary_);
    }

private:
    std::string binary_;
};

using CommandMaker = std::unique_ptr<Command> (*)(Arguments& program);

template<typename T>
std::unique_ptr<Command> make(Arguments& program) {
    return std::make_unique<T>(program);
}

// In the order of the help.
constexpr CommandMaker commandTable[] = {
    make<PresetShow>, make<PresetVerify>, make<PresetNew>, make<PresetExport>, make<PresetImport>,
};

} // namespace

PresetCommand::PresetCommand(Arguments& program)
    : Command(program, "preset", "Show, check and create preset files; needs no pedal") {
    for (const CommandMaker makeCommand : commandTable)
        commands_.push_back(makeCommand(arguments()));
}

ExitStatus PresetCommand::run() {
    const auto given =
        std::ranges::find_if(commands_, [](const auto& command) { return command->given(); });
    return given == commands_.end() ? ExitStatus::wrongUsage : (*given)->run();
}

} // namespace cabslot
