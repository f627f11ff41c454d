#include "analysis/FileFacts.h"

#include <algorithm>
#include <cmath>

namespace cabslot {

namespace {

constexpr std::size_t samplesAtOnce = 4096;

void addUsed(FileFacts& facts, double value) {
    if (!std::isfinite(value))
        ++facts.noNumbers;
    else if (std::abs(value) > 1) {
        ++facts.beyond;
        facts.largest = std::max(facts.largest, std::abs(value));
    }
}

void add(FileFacts& facts, std::size_t frame, double value, std::size_t decoded) {
    const double energy = std::isfinite(value) ? value * value : 0;
    facts.energy += energy;
    if (frame < decoded)
        addUsed(facts, value);
    else
        facts.energyBehind += energy;
}

} // namespace

FileFacts factsOf(const IRFile& file) {
    FileFacts facts{.sampleRate = file.sampleRate(),
                    .channels = file.channelCount(),
                    .bits = file.bitsPerSample(),
                    .claimed = file.frameCount(),
                    .held = file.heldFrames(),
                    .misplaced = file.misplacedTag()};
    std::array<float, samplesAtOnce> values{};
    while (const std::size_t count = file.readChannel(0, facts.frames, values)) {
        for (std::size_t i = 0; i < count; ++i)
            add(facts, facts.frames + i, static_cast<double>(values[i]), file.decodedPoints());
        facts.frames += count;
    }
    facts.moreFollows = !file.holdsAllSamples();
    if (facts.channels <= usableChannels)
        facts.used = std::min<std::size_t>(facts.frames, file.decodedPoints());
    return facts;
}

std::string framesText(const FileFacts& facts) {
    std::string text = std::to_string(facts.held);
    if (facts.claimed > facts.held)
        text += " (the file claims " + std::to_string(facts.claimed) + ")";
    if (facts.used == 0)
        return text + ", of which none is used";
    if (facts.used == facts.held)
        return text + ", all of which are used";
    return text + ", of which " + std::to_string(facts.used) + " are used";
}

} // namespace cabslot
