#include "analysis/IRSummary.h"

#include "analysis/Words.h"
#include "irfile/NameField.h"

namespace cabslot {

namespace {

std::string originText(const IRFile& file) {
    if (file.isFactory())
        return "Factory IR";
    return "WAV, " + std::to_string(file.sampleRate()) + " Hz, " +
           std::to_string(file.bitsPerSample()) + " bits, " +
           countText(file.channelCount(), "channel");
}

} // namespace

IRSummary summaryOf(const IRFile& file, const Block& block, const std::string& name) {
    const Samples samples = samplesOf(block);
    const FileFacts facts = factsOf(file);
    return {name, originText(file), framesText(facts), samples, findingsOf(samples, facts)};
}

IRSummary summaryOf(const ReadIR& read) {
    return summaryOf(read.file, read.ir.block, shownName(read.ir));
}

IRSummary summaryOf(const Block& block, const std::string& name, const std::string& origin) {
    const Samples samples = samplesOf(block);
    return {name, origin, {}, samples, findingsOf(samples, FileFacts{})};
}

std::string shownName(const IR& ir) {
    const std::string name = textOf(ir.name);
    const std::size_t first = name.find_first_not_of(' ');
    if (first == std::string::npos)
        return {};
    return name.substr(first, name.find_last_not_of(' ') + 1 - first);
}

std::string levelsText(const Samples& samples) {
    if (peakOf(samples) == 0)
        return "silent";
    return "peak " + dbfsText(peakDbfs(samples)) + ", RMS " + dbfsText(rmsDbfs(samples));
}

} // namespace cabslot
