#include "cli/Command.h"
#include "cli/Console.h"
#include "cli/OutputFile.h"
#include "irfile/QNIRFile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <optional>
#include <vector>

namespace cabslot {

namespace {

using Block = std::array<std::uint32_t, irPointCount>;

constexpr double fullScale = 8388608; // 2^23

// The block's loudest point, as the pedal will play it: 24-bit two's complement. Nothing if silent.
std::optional<double> peakDbfs(const Block& block) {
    double peak = 0;
    for (const std::uint32_t word : block) {
        const auto sample = static_cast<std::int32_t>(word << 8) / 256;
        peak = std::max(peak, std::abs(sample / fullScale));
    }
    if (peak == 0)
        return std::nullopt;
    return 20 * std::log10(peak);
}

std::string nameText(const QNIRFile& file) {
    std::string text;
    for (const std::uint8_t byte : file.nameField()) {
        if (byte != 0)
            text += static_cast<char>(byte);
    }
    return text;
}

void printJson(const QNIRFile& file, const Block& block) {
    nlohmann::ordered_json json = {{"version", 1},
                                   {"kind", file.isInteralIR() ? "factory" : "wav"},
                                   {"name", nameText(file)},
                                   {"rate", file.sampleRate()},
                                   {"channels", file.channelCount()},
                                   {"bits", file.bitsPerSample()},
                                   {"frames", file.frameCount()},
                                   {"points", file.decodedPoints()},
                                   {"peak_dbfs", nullptr}};
    if (const auto peak = peakDbfs(block))
        json["peak_dbfs"] = std::round(*peak * 100) / 100;
    std::cout << json.dump(2) << '\n';
}

const char* channelRemark(const QNIRFile& file) {
    switch (file.channelCount()) {
    case 1:
        return "";
    case 2:
        return " (the left one is used)";
    default:
        return " (silent in the pedal: only one or two channels can be used)";
    }
}

void printText(const QNIRFile& file, const Block& block) {
    std::cout << "kind      " << (file.isInteralIR() ? "factory IR" : "WAV") << '\n'
              << "name      " << shownName(nameText(file)) << '\n'
              << "rate      " << file.sampleRate() << " Hz\n"
              << "channels  " << file.channelCount() << channelRemark(file) << '\n'
              << "bits      " << file.bitsPerSample()
              << (file.bitsPerSample() == 32 ? " (read as float)" : "") << '\n'
              << "frames    " << file.frameCount() << ", of which " << file.decodedPoints()
              << " are used\n"
              << "peak      ";
    if (const auto peak = peakDbfs(block))
        std::cout << std::fixed << std::setprecision(2) << *peak << " dBFS\n";
    else
        std::cout << "silent\n";
}

std::vector<std::uint8_t> littleEndianWords(const Block& block) {
    std::vector<std::uint8_t> bytes;
    for (const std::uint32_t word : block) {
        for (unsigned shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(word >> shift));
    }
    return bytes;
}

} // namespace

InspectCommand::InspectCommand(CLI::App& app)
    : Command(app, "inspect", "Show what a file would put into the pedal; needs no pedal") {
    subcommand().add_option("FILE", file_, "A WAV or factory IR file")->required()->type_name("");
    subcommand().add_flag("--json", json_, "Print JSON instead of lines of text");
    subcommand()
        .add_option("--block", blockFile_,
                    "Write the 1024 points to this file, as little-endian 32-bit words")
        ->type_name("OUT");
}

ExitStatus InspectCommand::run() {
    QNIRFile file;
    Block block{};
    if (!file.OpenFilePath(file_) || !file.GetIRDataBuffer(block)) {
        complain(file_ + ": " + file.whyRefused());
        return ExitStatus::fileRefused;
    }
    if (std::string why;
        !blockFile_.empty() && !writeOutputFile(blockFile_, littleEndianWords(block), why)) {
        complain(why);
        return ExitStatus::wrongUsage;
    }
    json_ ? printJson(file, block) : printText(file, block);
    return ExitStatus::done;
}

} // namespace cabslot
