#include "cli/PrepareCommand.h"

#include "analysis/Plots.h"
#include "analysis/Words.h"
#include "base/OnAllCores.h"
#include "base/PathText.h"
#include "base/VisibleText.h"
#include "cli/Console.h"
#include "cli/Document.h"
#include "cli/SvgFile.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>

namespace cabslot {

namespace {

Json jsonOf(const std::string& from, const std::string& to, const PreparedIR& prepared) {
    return {{"file", from},
            {"out", to},
            {"peak_dbfs", levelJson(peakDbfs(samplesOf(prepared.ir.block)))},
            {"steps", prepared.steps}};
}

} // namespace

PrepareCommand::PrepareCommand(Arguments& program, CommonOptions& options)
    : Command(program, "prepare",
              "Make the best 1024 points of files, as WAV files to load; needs no pedal"),
      common_(options) {
    arguments().add({.name = "FILE",
                     .help = "The file and the WAV file to write; with --into, files alone",
                     .reader = into(files_),
                     .required = true,
                     .many = true});
    arguments().add({.name = "--into",
                     .help = "Write each file into this folder, under its own name",
                     .reader = into(folder_),
                     .type = "FOLDER"});
    addForce(options);
    switches_.addTo(arguments());
    addJson(json_);
    arguments().add({.name = "--plot",
                     .help = "Draw the response before and after into this file, named *.svg",
                     .reader = into(plotFile_, whyNoSvgPath),
                     .type = "OUT"});
    arguments().addCheck([this] { return whatIsWrong(); });
}

std::string PrepareCommand::whatIsWrong() const {
    if (folder_.empty() && files_.size() != 2)
        return "give the file and the WAV file to write, or --into FOLDER";
    if (!plotFile_.empty() && files_.size() > 2 - (folder_.empty() ? 0 : 1))
        return "--plot takes a single file";
    if (folder_.empty() && pathOf(files_[1]).extension() != ".wav")
        return files_[1] + ": the output's name must end with .wav";
    return {};
}

std::vector<PrepareCommand::Job> PrepareCommand::jobs() const {
    if (folder_.empty())
        return {{files_[0], files_[1]}};
    std::vector<Job> all;
    for (const std::string& file : files_)
        all.push_back({file, textOf(pathOf(folder_) / pathOf(file).stem()) + ".wav"});
    return all;
}

/// All that will be written, checked; what must not be is reported.
OutputFiles PrepareCommand::outputsOf(const std::vector<Job>& jobs) const {
    OutputFiles outputs(common_.force);
    for (const Job& job : jobs)
        outputs.addInput(job.from);
    for (const Job& job : jobs)
        outputs.add(job.to);
    outputs.add(plotFile_);
    return outputs;
}

/// Writes the prepared IR; returns why that failed, or an empty text.
std::string PrepareCommand::write(const Job& job, const PreparedIR& prepared,
                                  const OutputFiles& outputs) const {
    std::string plot;
    if (!plotFile_.empty())
        plot = svgFile(comparisonPage(textOf(pathOf(job.from).filename()), prepared.steps,
                                      samplesOf(prepared.plain), samplesOf(prepared.ir.block)));
    return outputs.write({{job.to, prepared.wav}, {plotFile_, {plot.begin(), plot.end()}}});
}

void PrepareCommand::report(const Job& job, const PreparedIR& prepared) const {
    std::cout << visibleText(job.to) << ": " << dbfsText(peakDbfs(samplesOf(prepared.ir.block)))
              << '\n';
    for (const std::string& step : prepared.steps)
        std::cout << "  " << step << '\n';
}

/// Prepares and writes every job. After Ctrl-C no further job is started, and those under way write
/// nothing.
std::vector<PrepareCommand::Result> PrepareCommand::work(const std::vector<Job>& jobs,
                                                         const OutputFiles& outputs) const {
    std::vector<Result> results(jobs.size());
    const auto prepareAndWrite = [&](std::size_t i) {
        Result& result = results[i];
        result.prepared = prepareFile(jobs[i].from, switches_.options(), interrupted);
        if (interrupted())
            return;
        if (result.prepared.whyRefused.empty())
            result.whyNotWritten = write(jobs[i], result.prepared, outputs);
        result.isDone = true;
    };
    if (jobs.size() == 1) { // this thread then sees Ctrl-C without a wait
        prepareAndWrite(0);
        return results;
    }
    ProgressLine progress;
    onAllCores(jobs.size(), prepareAndWrite, [&](std::size_t done) {
        progress.show(std::to_string(done) + " of " + std::to_string(jobs.size()));
        return !interrupted();
    });
    return results;
}

ExitStatus PrepareCommand::run() {
    const std::vector<Job> all = jobs();
    if (!folder_.empty() && !isFolder(folder_))
        return ExitStatus::wrongUsage;
    const OutputFiles outputs = outputsOf(all);
    if (!outputs.mayWrite())
        return ExitStatus::wrongUsage;
    for (const Job& job : all)
        warnOfName(job.to);
    ExitStatus status = ExitStatus::done;
    Json::List written;
    const std::vector<Result> results = work(all, outputs);
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Result& result = results[i];
        if (!result.isDone) {
            status = ExitStatus::interrupted;
        } else if (!result.prepared.whyRefused.empty()) {
            complain(all[i].from + ": " + result.prepared.whyRefused);
            status = ExitStatus::fileRefused;
        } else if (!result.whyNotWritten.empty()) {
            complain(result.whyNotWritten);
            status = ExitStatus::wrongUsage;
        } else if (json_) {
            written.push_back(jsonOf(all[i].from, all[i].to, result.prepared));
        } else {
            report(all[i], result.prepared);
        }
    }
    if (json_)
        printDocument({{"files", written}});
    return interrupted() ? ExitStatus::interrupted : status;
}

} // namespace cabslot
