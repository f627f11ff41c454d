#include "cli/InspectCommand.h"

#include "analysis/Plots.h"
#include "analysis/Words.h"
#include "cli/Console.h"
#include "cli/Json.h"
#include "cli/OutputFile.h"
#include "cli/SvgFile.h"
#include "cli/TerminalWave.h"
#include "irfile/QNIRFile.h"

#include <cmath>
#include <iostream>
#include <optional>
#include <vector>

namespace cabslot {

namespace {

std::string nameText(const QNIRFile& file) {
    std::string text;
    for (const std::uint8_t byte : file.nameField()) {
        if (byte != 0)
            text += static_cast<char>(byte);
    }
    return text;
}

nlohmann::ordered_json levelJson(std::optional<double> level) {
    return level ? nlohmann::ordered_json(std::round(*level * 100) / 100) : nullptr;
}

void printJson(const QNIRFile& file, const IRSummary& summary) {
    nlohmann::ordered_json json = {{"version", 1},
                                   {"kind", file.isInteralIR() ? "factory" : "wav"},
                                   {"name", nameText(file)},
                                   {"rate", file.sampleRate()},
                                   {"channels", file.channelCount()},
                                   {"bits", file.bitsPerSample()},
                                   {"frames", file.frameCount()},
                                   {"points", file.decodedPoints()},
                                   {"peak_dbfs", levelJson(peakDbfs(summary.samples))},
                                   {"rms_dbfs", levelJson(rmsDbfs(summary.samples))},
                                   {"findings", nlohmann::ordered_json::array()}};
    for (const Finding& finding : summary.findings)
        json["findings"].push_back({{"kind", nameOf(finding.kind)}, {"text", finding.text}});
    printDocument(json);
}

const char* channelRemark(const QNIRFile& file) {
    switch (file.channelCount()) {
    case 1:
        return "";
    case 2:
        return " (the left one is used)";
    default:
        return " (silent in the pedal: only one or two can be used)";
    }
}

void printText(const QNIRFile& file, const IRSummary& summary) {
    std::cout << "kind      " << (file.isInteralIR() ? "factory IR" : "WAV") << '\n'
              << "name      " << shownName(nameText(file)) << '\n'
              << "rate      " << file.sampleRate() << " Hz\n"
              << "channels  " << file.channelCount() << channelRemark(file) << '\n'
              << "bits      " << file.bitsPerSample()
              << (file.bitsPerSample() == 32 ? " (read as float)" : "") << '\n'
              << "frames    " << summary.frames << '\n'
              << "peak      " << dbfsText(peakDbfs(summary.samples)) << '\n'
              << "RMS       " << dbfsText(rmsDbfs(summary.samples)) << '\n';
    if (const std::size_t columns = waveColumns(); columns > 0)
        std::cout << brailleWave(summary.samples, columns);
    for (const Finding& finding : summary.findings)
        std::cout << finding.text << '\n';
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
    : Command(
          app, "inspect",
          "Show what a file would put into the pedal, and what is odd about it; needs no pedal") {
    addFile("FILE", file_, "A WAV or factory IR file");
    addJson(json_);
    subcommand()
        .add_option("--block", blockFile_,
                    "Write the 1024 points to this file, as little-endian 32-bit words")
        ->type_name("OUT");
    subcommand()
        .add_option("--plot", plotFile_,
                    "Draw waveform, frequency response and findings into this file, named *.svg")
        ->type_name("OUT")
        ->check([](const std::string& path) {
            return isSvgPath(path) ? std::string{} : path + ": a plot's name must end with .svg";
        });
}

/// Writes what was asked for; false, and told, when that is not possible.
bool InspectCommand::writeFiles(const IRSummary& summary, const Block& block) const {
    const auto write = [](const std::string& path, const std::vector<std::uint8_t>& bytes) {
        std::string why;
        if (writeOutputFile(path, bytes, why))
            return true;
        complain(why);
        return false;
    };
    if (!blockFile_.empty() && !write(blockFile_, littleEndianWords(block)))
        return false;
    if (plotFile_.empty())
        return true;
    const std::string plot = svgFile(summaryPage(summary));
    return write(plotFile_, {plot.begin(), plot.end()});
}

ExitStatus InspectCommand::run() {
    QNIRFile file;
    Block block{};
    if (!file.openForInspection(file_) || !file.GetIRDataBuffer(block)) {
        complain(file_ + ": " + file.whyRefused());
        return ExitStatus::fileRefused;
    }
    const IRSummary summary = summaryOf(file, block, shownName(nameText(file)));
    if (!writeFiles(summary, block))
        return ExitStatus::wrongUsage;
    json_ ? printJson(file, summary) : printText(file, summary);
    return ExitStatus::done;
}

} // namespace cabslot
