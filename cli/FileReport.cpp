#include "cli/FileReport.h"

#include "base/Fnv1a.h"
#include "cli/Console.h"
#include "cli/Document.h"
#include "irfile/NameField.h"
#include "irfile/NameFromPath.h"

#include <span>

namespace cabslot {

namespace {

std::uint64_t hashOf(const Block& block) {
    return fnv1a({reinterpret_cast<const std::uint8_t*>(block.data()), sizeof block});
}

} // namespace

FileReport reportOn(const ReadIR& read, const IRSummary& summary) {
    const IRFile& file = read.file;
    return {.path = read.ir.source,
            .title = shownName(textOf(read.ir.name)),
            .factory = read.ir.factory,
            .name = textOf(read.ir.name),
            .rate = file.sampleRate(),
            .channels = file.channelCount(),
            .bits = file.bitsPerSample(),
            .claimedFrames = file.frameCount(),
            .heldFrames = file.heldFrames(),
            .points = file.decodedPoints(),
            .peak = peakDbfs(summary.samples),
            .rms = rmsDbfs(summary.samples),
            .findings = summary.findings,
            .blockHash = hashOf(read.ir.block)};
}

FileReport inspectFile(const std::string& path) {
    const ReadIR read = readIR(path, interrupted);
    if (read)
        return reportOn(read, summaryOf(read));
    return {.path = path,
            .title = shownName(std::string(irNameFromPath(path))),
            .refused = true,
            .whyRefused = read.whyRefused};
}

Json fieldsOf(const FileReport& report) {
    return {{"kind", report.factory ? "factory" : "wav"},
            {"name", report.name},
            {"rate", report.rate},
            {"channels", report.channels},
            {"bits", report.bits},
            {"frames", report.claimedFrames},
            {"points", report.points},
            {"peak_dbfs", levelJson(report.peak)},
            {"rms_dbfs", levelJson(report.rms)},
            {"findings", findingsJson(report.findings)}};
}

} // namespace cabslot
