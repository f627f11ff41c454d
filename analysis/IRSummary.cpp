#include "analysis/IRSummary.h"

#include "analysis/Words.h"

namespace cabslot {

namespace {

std::string originText(const QNIRFile& file) {
    if (file.isInteralIR())
        return "Factory IR";
    return "WAV, " + std::to_string(file.sampleRate()) + " Hz, " +
           std::to_string(file.bitsPerSample()) + " bits, " +
           countText(file.channelCount(), "channel");
}

} // namespace

IRSummary summaryOf(const QNIRFile& file, const Block& block, const std::string& name) {
    const Samples samples = samplesOf(block);
    const FileFacts facts = factsOf(file);
    return {name, originText(file), framesText(facts), samples, findingsOf(samples, facts)};
}

IRSummary summaryOf(const Block& block, const std::string& name, const std::string& origin) {
    const Samples samples = samplesOf(block);
    return {name, origin, {}, samples, findingsOf(samples, FileFacts{})};
}

std::string levelsText(const Samples& samples) {
    if (peakOf(samples) == 0)
        return "silent";
    return "peak " + dbfsText(peakDbfs(samples)) + ", RMS " + dbfsText(rmsDbfs(samples));
}

} // namespace cabslot
