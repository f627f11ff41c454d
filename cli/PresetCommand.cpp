#include "cli/PresetCommand.h"

#include "base/Files.h"
#include "cli/Console.h"
#include "cli/OutputFile.h"
#include "preset/QNPresetFile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
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

/// Saves `preset` with the bytes of the file `binary` as its data; what they do not fill is 0.
ExitStatus saveWithData(QNPresetFile& preset, const std::string& file, const std::string& binary) {
    const FileBytes bytes = readFile(binary, presetDataSize + 1); // one more shows what is too long
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

/// What all have in common but verify: one preset file.
class PresetFileCommand : public Command {
protected:
    PresetFileCommand(CLI::App& app, const std::string& name, const std::string& description,
                      const std::string& fileDescription = "A preset file")
        : Command(app, name, description) {
        addFile("FILE", file_, fileDescription);
    }

    void addFile(const std::string& name, std::string& file, const std::string& description) {
        subcommand().add_option(name, file, description)->required()->type_name("");
    }

    const std::string& file() const { return file_; }

    ExitStatus read(QNPresetFile& preset) const {
        const PresetFinding found = examinePreset(file_); // once: what is told is what was found
        if (found.error != presetGood)
            return refuse(file_, presetVerdict(found));
        ChangeData(found.image.Buff_A, preset.NewPreset.Buff_A);
        return ExitStatus::done;
    }

private:
    std::string file_;
};

class PresetShow final : public PresetFileCommand {
public:
    explicit PresetShow(CLI::App& app)
        : PresetFileCommand(app, "show", "Show the fields of a preset and whether it is good") {
        subcommand().add_flag("--json", json_, "Print JSON instead of lines of text");
    }

    ExitStatus run() override {
        const PresetFinding found = examinePreset(file());
        if (found.error == presetUnreadable || found.error == presetWrongLength)
            return refuse(file(), presetVerdict(found));
        json_ ? printJson(found) : printText(found);
        return found.error == presetGood ? ExitStatus::done : ExitStatus::fileRefused;
    }

private:
    static std::size_t usedBytes(const PresetBuffUnion& image, PresetField field) {
        const auto bytes = image.bytes(field);
        return bytes.size() - static_cast<std::size_t>(std::ranges::count(bytes, 0));
    }

    static std::string bytesText(const PresetBuffUnion& image, PresetField field) {
        const std::size_t used = usedBytes(image, field);
        return std::to_string(field.size) + " bytes, " +
               (used == 0 ? "all 0" : std::to_string(used) + " of them not 0");
    }

    static const char* sizeRemark(const PresetBuffUnion& image) {
        const bool usual = image.number(buff_S::FileSize) == presetSize;
        return usual ? "" : " (should be 2048, but is not checked)";
    }

    static void printJson(const PresetFinding& found) {
        const PresetBuffUnion& image = found.image;
        const nlohmann::ordered_json json = {
            {"version", 1},
            {"file_size", image.number(buff_S::FileSize)},
            {"device_id", image.number(buff_S::DeviceID)},
            {"preset_version", image.number(buff_S::PresetVersion)},
            {"reserve_nonzero_bytes", usedBytes(image, buff_S::Reserve)},
            {"checksum_stored", image.number(buff_S::CheckSum)},
            {"checksum_computed", image.dataSum()},
            {"data_nonzero_bytes", usedBytes(image, buff_S::DataStart)},
            {"error", static_cast<std::int32_t>(found.error)},
            {"verdict", presetVerdict(found)}};
        std::cout << json.dump(2) << '\n';
    }

    static void printText(const PresetFinding& found) {
        const PresetBuffUnion& image = found.image;
        const std::string code = "error " + std::to_string(found.error) + ": ";
        std::cout << "size      " << image.number(buff_S::FileSize) << sizeRemark(image) << '\n'
                  << "device    " << image.number(buff_S::DeviceID) << '\n'
                  << "version   " << image.number(buff_S::PresetVersion) << '\n'
                  << "reserve   " << bytesText(image, buff_S::Reserve) << '\n'
                  << "checksum  " << image.number(buff_S::CheckSum) << " stored, "
                  << image.dataSum() << " computed\n"
                  << "data      " << bytesText(image, buff_S::DataStart) << '\n'
                  << "verdict   " << (found.error == presetGood ? "" : code) << presetVerdict(found)
                  << '\n';
    }

    bool json_ = false;
};

class PresetVerify final : public Command {
public:
    explicit PresetVerify(CLI::App& app)
        : Command(app, "verify", "Tell of each file whether it is a good preset") {
        subcommand().add_option("FILE", files_, "Preset files")->required()->type_name("");
    }

    ExitStatus run() override {
        ExitStatus status = ExitStatus::done;
        for (const std::string& file : files_) {
            const PresetFinding found = examinePreset(file);
            if (found.error == presetGood)
                std::cout << file << ": " << presetVerdict(found)
                          << std::endl; // in step with errors
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
    explicit PresetNew(CLI::App& app)
        : PresetFileCommand(app, "new", "Make a preset file, of zeros unless data are given",
                            "The file to make") {
        data_ = subcommand()
                    .add_option("--data", binary_,
                                "The data area, up to 1536 bytes; zeros fill the rest")
                    ->type_name("BIN");
    }

    ExitStatus run() override {
        std::error_code unknown;
        if (std::filesystem::exists(std::filesystem::symlink_status(file(), unknown))) {
            complain(file() + " is there already; give a new name, or remove it first");
            return ExitStatus::wrongUsage;
        }
        QNPresetFile preset;
        return data_->count() > 0 ? saveWithData(preset, file(), binary_) : save(preset, file());
    }

private:
    const CLI::Option* data_ = nullptr; // an empty name is a name, too
    std::string binary_;
};

class PresetExport final : public PresetFileCommand {
public:
    explicit PresetExport(CLI::App& app)
        : PresetFileCommand(app, "export", "Write a preset's data area, 1536 bytes, to a file") {
        addFile("OUT", out_, "The file to write");
    }

    ExitStatus run() override {
        QNPresetFile preset;
        if (const ExitStatus status = read(preset); status != ExitStatus::done)
            return status;
        std::string why;
        if (std::error_code unknown; std::filesystem::equivalent(file(), out_, unknown))
            why = out_ + " is the preset itself; give another name";
        else if (writeOutputFile(out_, preset.NewPreset.bytes(buff_S::DataStart), why))
            return ExitStatus::done;
        complain(why);
        return ExitStatus::wrongUsage;
    }

private:
    std::string out_;
};

class PresetImport final : public PresetFileCommand {
public:
    explicit PresetImport(CLI::App& app)
        : PresetFileCommand(app, "import", "Replace a preset's data area by a file's bytes") {
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

} // namespace

PresetCommand::PresetCommand(CLI::App& app)
    : Command(app, "preset", "Show, check and make preset files; needs no pedal") {
    CLI::App& own = subcommand();
    own.require_subcommand(1);
    commands_.push_back(std::make_unique<PresetShow>(own));
    commands_.push_back(std::make_unique<PresetVerify>(own));
    commands_.push_back(std::make_unique<PresetNew>(own));
    commands_.push_back(std::make_unique<PresetExport>(own));
    commands_.push_back(std::make_unique<PresetImport>(own));
}

ExitStatus PresetCommand::run() {
    const auto given =
        std::ranges::find_if(commands_, [](const auto& command) { return command->given(); });
    return given == commands_.end() ? ExitStatus::wrongUsage : (*given)->run();
}

} // namespace cabslot
