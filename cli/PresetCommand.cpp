#include "cli/PresetCommand.h"

#include "base/Files.h"
#include "base/VisibleText.h"
#include "cli/Console.h"
#include "cli/OutputFiles.h"
#include "cli/PresetShow.h"
#include "preset/QNPresetFile.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <optional>
#include <string>

namespace cabslot {

namespace {

std::string sizeText() {
    return std::to_string(presetDataSize) + " bytes";
}

std::string dataHelp() {
    return "The data area, up to " + sizeText() + "; zeros fill the rest";
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
        return refuse(binary, "it is more than " + sizeText() +
                                  " long; the data area of a preset holds no more");
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
                std::cout << visibleText(file) << ": " << presetVerdict(found)
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
    PresetNew(Arguments& program, CommonOptions& options)
        : PresetFileCommand(program, "new", "Create a preset file, all zeros unless data are given",
                            "The file to create"),
          options_(options) {
        addForce(options);
        arguments().add(
            {.name = "--data", .help = dataHelp(), .reader = into(binary_), .type = "BIN"});
    }

    ExitStatus run() override {
        OutputFiles outputs(options_.force);
        if (binary_)
            outputs.addInput(*binary_);
        outputs.add(file());
        if (!outputs.mayWrite())
            return ExitStatus::wrongUsage;
        QNPresetFile preset;
        return binary_ ? saveWithData(preset, file(), *binary_) : save(preset, file());
    }

private:
    CommonOptions& options_;
    std::optional<std::string> binary_;
};

class PresetExport final : public PresetFileCommand {
public:
    PresetExport(Arguments& program, CommonOptions& options)
        : PresetFileCommand(program, "export",
                            "Write a preset's data area, " + sizeText() + ", to a file"),
          options_(options) {
        addFile("OUT", out_, "The file to write");
        addForce(options);
    }

    ExitStatus run() override {
        QNPresetFile preset;
        if (const ExitStatus status = read(preset); status != ExitStatus::done)
            return status;
        std::array<std::uint8_t, presetDataSize> data{};
        preset.ReadPresetBufferPresetData(data.data(), presetDataSize);
        OutputFiles outputs(options_.force);
        outputs.addInput(file());
        outputs.add(out_);
        if (!outputs.mayWrite())
            return ExitStatus::wrongUsage;
        return outputs.writeAndReport({{out_, {data.begin(), data.end()}}});
    }

private:
    CommonOptions& options_;
    std::string out_;
};

class PresetImport final : public PresetFileCommand {
public:
    explicit PresetImport(Arguments& program)
        : PresetFileCommand(program, "import", "Replace a preset's data area with a file's bytes") {
        addFile("BIN", binary_, dataHelp());
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

// In the order of the help.
constexpr CommandMaker commandTable[] = {
    make<PresetShow>, make<PresetVerify>, make<PresetNew>, make<PresetExport>, make<PresetImport>,
};

} // namespace

PresetCommand::PresetCommand(Arguments& program, CommonOptions& options)
    : CommandGroup(program, options, "preset",
                   "Show, check and create preset files; needs no pedal", commandTable) {}

} // namespace cabslot
