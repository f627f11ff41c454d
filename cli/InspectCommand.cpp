#include "cli/InspectCommand.h"

#include "analysis/Plots.h"
#include "analysis/Words.h"
#include "base/LittleEndian.h"
#include "base/PathText.h"
#include "cli/CompareReport.h"
#include "cli/Console.h"
#include "cli/Document.h"
#include "cli/FileList.h"
#include "cli/FileReport.h"
#include "cli/FileTable.h"
#include "cli/OutputFiles.h"
#include "cli/SvgFile.h"
#include "cli/TerminalWave.h"

#include <filesystem>
#include <iostream>
#include <optional>
#include <vector>

namespace cabslot {

namespace {

const char* channelRemark(std::uint16_t channels) {
    switch (channels) {
    case 1:
        return "";
    case 2:
        return " (the left one is used)";
    default:
        return " (silent in the pedal: only one or two can be used)";
    }
}

void printText(const FileReport& report, const IRSummary& summary) {
    std::cout << "kind      " << (report.factory ? "factory IR" : "WAV") << '\n'
              << "name      " << report.title << '\n'
              << "rate      " << report.rate << " Hz\n"
              << "channels  " << report.channels << channelRemark(report.channels) << '\n'
              << "bits      " << report.bits << (report.bits == 32 ? " (read as float)" : "")
              << '\n'
              << "frames    " << summary.frames << '\n'
              << "peak      " << dbfsText(report.peak) << '\n'
              << "RMS       " << dbfsText(report.rms) << '\n';
    if (const std::size_t columns = waveColumns(); columns > 0)
        std::cout << brailleWave(summary.samples, columns);
    for (const Finding& finding : summary.findings)
        std::cout << finding.text << '\n';
}

std::vector<std::uint8_t> littleEndianWords(const Block& block) {
    std::vector<std::uint8_t> bytes(sizeof block);
    for (std::size_t i = 0; i < block.size(); ++i)
        putLittleEndian(std::span(bytes).subspan(4 * i, 4), block[i]);
    return bytes;
}

} // namespace

InspectCommand::InspectCommand(Arguments& program, CommonOptions& options)
    : Command(program, "inspect",
              "Show what files would put into the pedal, and any problems; needs no pedal"),
      options_(options) {
    arguments().add({.name = "FILE",
                     .help = "WAV or factory IR files, and folders with WAV files",
                     .reader = into(files_),
                     .required = true,
                     .many = true});
    arguments().addFlag("--recursive", recursive_, "Look into subfolders too");
    arguments().add({.name = "--compare",
                     .help = "Show how this file differs: response, shift, polarity, what is left",
                     .reader = into(compared_),
                     .type = "OTHER"});
    addJson(json_);
    arguments().add({.name = "--block",
                     .help = "Write the 1024 points to this file, as little-endian 32-bit words",
                     .reader = into(blockFile_),
                     .type = "OUT"});
    arguments().add(
        {.name = "--plot",
         .help = "Draw waveform, frequency response and findings into this file, named *.svg",
         .reader = into(plotFile_, whyNoSvgPath),
         .type = "OUT"});
    addForce(options);
    arguments().addCheck([this] { return whatIsWrong(); });
}

bool InspectCommand::isForOneFile() const {
    std::error_code unknown;
    return files_.size() == 1 && !std::filesystem::is_directory(pathOf(files_.front()), unknown);
}

std::string InspectCommand::whatIsWrong() const {
    const bool writes = !blockFile_.empty() || !plotFile_.empty();
    if (isForOneFile())
        return {};
    return writes              ? "--block and --plot take a single file"
           : compared_.empty() ? ""
                               : "--compare takes a single file";
}

ExitStatus InspectCommand::inspectOne() const {
    const std::string& path = files_.front();
    OutputFiles outputs(options_.force);
    outputs.addInput(path);
    if (!compared_.empty())
        outputs.addInput(compared_);
    outputs.add(blockFile_);
    outputs.add(plotFile_);
    if (!outputs.mayWrite())
        return ExitStatus::wrongUsage;
    const ReadIR read = readIR(path, interrupted);
    if (!read) {
        complain(path + ": " + read.whyRefused);
        return interrupted() ? ExitStatus::interrupted : ExitStatus::fileRefused;
    }
    const IRSummary summary = summaryOf(read);
    std::optional<CompareReport> comparison;
    if (!compared_.empty()) {
        const ReadIR other = readIR(compared_, interrupted);
        if (!other) {
            complain(compared_ + ": " + other.whyRefused);
            return interrupted() ? ExitStatus::interrupted : ExitStatus::fileRefused;
        }
        comparison.emplace(read.ir, other.ir);
    }
    std::string plot;
    if (!plotFile_.empty())
        plot = svgFile(comparison ? comparison->page() : summaryPage(summary));
    if (const ExitStatus status =
            outputs.writeAndReport({{blockFile_, littleEndianWords(read.ir.block)},
                                    {plotFile_, {plot.begin(), plot.end()}}});
        status != ExitStatus::done)
        return status;
    const FileReport report = reportOn(read, summary);
    Json fields = fieldsOf(report);
    if (comparison)
        fields.add("compare", comparison->fields());
    if (json_)
        printDocument(fields);
    else
        printText(report, summary);
    if (!json_ && comparison)
        comparison->print();
    return ExitStatus::done;
}

ExitStatus InspectCommand::run() {
    if (isForOneFile())
        return inspectOne();
    const FileList list = listFiles(files_, recursive_);
    if (list.paths.empty())
        return ExitStatus::fileRefused;
    const ExitStatus status = inspectFiles(list.paths, json_);
    return status == ExitStatus::done && !list.complete ? ExitStatus::fileRefused : status;
}

} // namespace cabslot
