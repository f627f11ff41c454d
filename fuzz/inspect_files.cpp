// The table and the JSON document of `inspect` for two IR files, and preparing the first.
//
// Input: steps of preparing (bits), then two files: a name (a count byte, then that many bytes) and
// the content, for the first file with two bytes of length.
#include "cli/FileTable.h"
#include "fuzz/Fuzzing.h"
#include "prepare/Prepare.h"

#include <nlohmann/json.hpp>

#include <iostream>
#include <sstream>

namespace cabslot::fuzz {
namespace {

PrepareOptions optionsFrom(std::uint8_t bits) {
    return {.channel = (bits & 1) != 0 ? Channel::mean : Channel::first,
            .resample = (bits & 2) != 0,
            .trim = (bits & 4) != 0,
            .minimumPhase = (bits & 8) != 0,
            .fade = (bits >> 4 & 3) * usualFade,
            .level = static_cast<LevelGoal>((bits >> 6) % 3)};
}

void checkPrepared(const ReadIR& read, const PrepareOptions& options) {
    const PreparedIR prepared = prepare(read, options);
    const ReadIR again = readIR(IRFile::of(prepared.wav, "a.wav"), "a.wav");
    check(again && again.ir.block == prepared.ir.block && again.file.frameCount() <= irPointCount,
          "the plain conversion passes a prepared file bit for bit");
    check(!options.changesNothing() || samplesOf(again.ir.block) == samplesOf(prepared.plain),
          "no step, no change");
    check(read.ir.factory || options.level == LevelGoal::keep ||
              peakOf(samplesOf(again.ir.block)) < 0.96606, // -0.3 dBFS
          "the peak stays within the goal");
}

FileReport reportOf(const std::string& path, View content, const PrepareOptions* options) {
    const ReadIR read = readIR(IRFile::of(content, path), path);
    if (!read)
        return {.path = path, .title = "?", .refused = true, .whyRefused = read.whyRefused};
    if (options)
        checkPrepared(read, *options);
    return reportOn(read, summaryOf(read));
}

std::string printed(const std::vector<FileReport>& reports, bool json) {
    std::ostringstream text;
    std::streambuf* const screen = std::cout.rdbuf(text.rdbuf());
    printReports(reports, json);
    std::cout.rdbuf(screen);
    return text.str();
}

} // namespace
} // namespace cabslot::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cabslot::fuzz;
    Input input(data, size);
    const auto options = optionsFrom(input.byte());
    const std::string name = input.text();
    const View content = input.bytes(input.number16());
    const std::string other = input.text();
    const std::vector reports = {reportOf(name, content, isInSample(size) ? &options : nullptr),
                                 reportOf(other, input.rest(), nullptr)};
    check(std::ranges::count_if(printed(reports, false),
                                [](char c) { return c >= 0 && c < ' '; }) == 3,
          "a heading, a line per file, no other control character");
    check(nlohmann::json::parse(printed(reports, true)).at("files").size() == 2, "it is JSON");
    return 0;
}
