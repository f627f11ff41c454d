#include "cli/BlendCommand.h"

#include "analysis/Plots.h"
#include "analysis/Words.h"
#include "base/PathText.h"
#include "base/VisibleText.h"
#include "cli/CompareReport.h"
#include "cli/Console.h"
#include "cli/Document.h"
#include "cli/SvgFile.h"
#include "irfile/WavBytes.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <iterator>
#include <numeric>

namespace cabslot {

namespace {

/// Numbers with `separator` between them; none if one of them is no number.
std::vector<double> numbersIn(const std::string& text, char separator) {
    std::vector<double> numbers;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t end = std::min(text.find(separator, from), text.size());
        const auto number = numberIn(text.substr(from, end - from));
        if (!number)
            return {};
        numbers.push_back(*number);
        from = end + 1;
    }
    return numbers;
}

std::string percentText(double percent) {
    return fixedText(percent, percent == std::round(percent) ? 0 : 1) + " %";
}

} // namespace

BlendCommand::BlendCommand(Arguments& program, CommonOptions& options)
    : Command(program, "blend",
              "Mix two or more files into one IR, aligned to the first; needs no pedal"),
      common_(options) {
    arguments().add({.name = "FILE",
                     .help = "The files to mix, two or more, and the WAV file to write",
                     .reader = into(files_),
                     .required = true,
                     .many = true});
    arguments().add({.name = "--mix",
                     .help = "Their shares, such as 60:40; equal ones if not given",
                     .reader = [this](const std::string& text) { return readMix(text); },
                     .type = "SHARES"});
    arguments().addFlag("--no-align", noAlign_, "Shift nothing, and leave polarities as they are");
    arguments().add({.name = "--invert",
                     .help = "Turn the polarity of file N, 1 for the first, or of several, as 2,3",
                     .reader = into(inverted_),
                     .type = "N"});
    arguments().addFlag("--prepare", prepares_,
                        "Prepare each file first; the switches of prepare say how");
    switches_.addTo(arguments());
    addForce(options);
    addJson(json_);
    arguments().add({.name = "--plot",
                     .help = "Draw the blend and its parts into this file, named *.svg",
                     .reader = into(plotFile_, whyNoSvgPath),
                     .type = "OUT"});
    arguments().addCheck([this] { return whatIsWrong(); });
}

std::string BlendCommand::readMix(const std::string& text) {
    mix_ = numbersIn(text, ':');
    const auto isShare = [](double share) { return share >= 0 && share <= 1e6; };
    if (mix_.empty() || !std::ranges::all_of(mix_, isShare))
        return text + " are no shares; write them as 60:40";
    return *std::ranges::max_element(mix_) > 0 ? std::string()
                                               : text + ": one of the shares must be more than 0";
}

std::string BlendCommand::whatIsWrong() const {
    if (files_.size() < 3)
        return "give two or more files, and the WAV file to write";
    if (pathOf(out()).extension() != ".wav")
        return out() + ": the output's name must end with .wav";
    if (!mix_.empty() && mix_.size() != inputCount())
        return "--mix needs one share for each of the " + std::to_string(inputCount()) + " files";
    const std::vector<double> inverted = numbersIn(inverted_, ',');
    const auto isFile = [this](double number) {
        return number >= 1 && number <= static_cast<double>(inputCount()) &&
               number == std::floor(number);
    };
    if ((!inverted_.empty() && inverted.empty()) || !std::ranges::all_of(inverted, isFile))
        return "--invert takes the number of a file, 1 to " + std::to_string(inputCount());
    if (switches_.given() && !prepares_)
        return "the switches of prepare need --prepare";
    return {};
}

std::vector<double> BlendCommand::weights() const {
    std::vector<double> shares = mix_.empty() ? std::vector<double>(inputCount(), 1) : mix_;
    const double all = std::accumulate(shares.begin(), shares.end(), 0.0);
    for (double& share : shares)
        share *= 100 / all;
    return shares;
}

std::vector<Polarity> BlendCommand::polarities() const {
    std::vector<Polarity> all(inputCount(), Polarity::found);
    for (const double number : numbersIn(inverted_, ','))
        all[static_cast<std::size_t>(number) - 1] = Polarity::turned;
    return all;
}

/// Reads, and prepares if that was asked for; returns why the file is refused.
std::string BlendCommand::whyNot(const std::string& path, Input& input) const {
    input.path = path;
    const ReadIR read = readIR(path, interrupted);
    if (!read || !prepares_) {
        input.block = read.ir.block;
        return read.whyRefused;
    }
    const PreparedIR prepared = prepare(read, switches_.options(), interrupted);
    input.block = prepared.ir.block;
    input.steps = prepared.steps;
    return prepared.whyRefused;
}

std::vector<std::string> BlendCommand::lines(const std::vector<Input>& inputs, const Blend& blend,
                                             const Mixed& mixed) const {
    std::vector<std::string> all;
    const std::vector<double> shares = weights();
    const bool isAlone = std::ranges::count(shares, 0.0) + 1 == std::ssize(shares);
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const std::string fit = isAlone ? "" : fitText(blend.fits()[i]);
        all.push_back(percentText(shares[i]) + " " + inputs[i].path + (fit.empty() ? "" : ": ") +
                      fit);
    }
    if (isAlone)
        all.emplace_back("Only one has a share, so the result is that IR itself.");
    else if (blend.delay() > 0)
        all.push_back("All are delayed by " + countText(blend.delay(), "point") +
                      ", so that no beginning is lost.");
    if (mixed.gain < 0)
        all.push_back("The sum would have clipped: level " + fixedText(mixed.gain, 2) + " dB.");
    return all;
}

std::string BlendCommand::plotOf(const std::vector<Input>& inputs, const Blend& blend,
                                 const Mixed& mixed) const {
    std::vector<Response> responses;
    responses.reserve(inputs.size() + 1); // the sum, too
    for (const Input& input : inputs)
        responses.emplace_back(samplesOf(input.block));
    const Samples sum = samplesOf(mixed.block);
    responses.emplace_back(sum);
    std::vector<Curve> curves;
    for (std::size_t i = 0; i < inputs.size(); ++i)
        curves.push_back({.response = &responses[i],
                          .name = std::string(lastPart(inputs[i].path)),
                          .ink = i == 0 ? Ink::other : Ink::third,
                          .style = i == 0 ? LineStyle::dashed : LineStyle::dotted});
    curves.push_back({.response = &responses.back(), .name = "blend"});
    return svgFile(
        responsesPage(std::string(lastPart(out())), lines(inputs, blend, mixed), &sum, curves));
}

Json BlendCommand::fieldsOf(const std::vector<Input>& inputs, const Blend& blend,
                            const Mixed& mixed) const {
    Json::List files;
    const std::vector<double> shares = weights();
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        const Fit& fit = blend.fits()[i];
        Json fields = {{"file", inputs[i].path},
                       {"share_percent", toTwoDecimals(shares[i])},
                       {"moved_points", toTwoDecimals(fit.shift)},
                       {"polarity_turned", fit.isTurned},
                       {"lost_energy", fit.lost},
                       {"steps", inputs[i].steps}};
        if (fit.alignment)
            fields.add("alignment", alignmentFields(*fit.alignment));
        files.push_back(fields);
    }
    return {{"out", out()},
            {"files", files},
            {"delay_points", blend.delay()},
            {"gain_db", toTwoDecimals(mixed.gain)},
            {"peak_dbfs", levelJson(peakDbfs(samplesOf(mixed.block)))}};
}

void BlendCommand::report(const std::vector<Input>& inputs, const Blend& blend,
                          const Mixed& mixed) const {
    if (json_)
        return printDocument(fieldsOf(inputs, blend, mixed));
    std::cout << visibleText(out()) << ": " << dbfsText(peakDbfs(samplesOf(mixed.block))) << '\n';
    for (const std::string& line : lines(inputs, blend, mixed))
        std::cout << "  " << visibleText(line) << '\n';
}

ExitStatus BlendCommand::run() {
    OutputFiles outputs(common_.force);
    for (std::size_t i = 0; i < inputCount(); ++i)
        outputs.addInput(files_[i]);
    outputs.add(out());
    outputs.add(plotFile_);
    if (!outputs.mayWrite())
        return ExitStatus::wrongUsage;
    std::vector<Input> inputs(inputCount());
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        if (const std::string why = whyNot(files_[i], inputs[i]); !why.empty()) {
            const ExitStatus refused = refuse(files_[i], why);
            return interrupted() ? ExitStatus::interrupted : refused;
        }
    }
    warnOfName(out());
    std::vector<Block> blocks;
    std::ranges::transform(inputs, std::back_inserter(blocks), &Input::block);
    const Blend blend(blocks, !noAlign_, polarities());
    const Mixed mixed = blend.mix(weights());
    const std::string plot = plotFile_.empty() ? "" : plotOf(inputs, blend, mixed);
    if (const ExitStatus status = outputs.writeAndReport(
            {{out(), wavBytes(mixed.block)}, {plotFile_, {plot.begin(), plot.end()}}});
        status != ExitStatus::done)
        return status;
    report(inputs, blend, mixed);
    return ExitStatus::done;
}

} // namespace cabslot
