#include "irfile/IRConversion.h"
#include "irfile/IRFile.h"
#include "irfile/SampleDecoding.h"
#include "irfile/SampleFormat.h"
#include "irfile/WavConversion.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr WAVE_FORMAT factoryFormat = {1, 1, 44100, 132300, 3, sampleBits};

} // namespace

std::string IRFile::convertTo(Block& block) const {
    if (!isOpen_)
        return "no file is loaded";
    if (isFactory()) {
        decodeFactory(samples(), block);
        return {};
    }
    std::array<std::uint32_t, irWorkCount> points;
    return convertWav(format(), frameCount(), samples(), points, block);
}

std::size_t IRFile::readChannel(std::uint16_t channel, std::size_t first,
                                std::span<float> values) const {
    const WAVE_FORMAT kind = format();
    const std::size_t sampleSize = kind.bitsPerSample / 8u;
    const std::size_t frameSize = sampleSize * kind.channelCount;
    if (channel >= kind.channelCount || !decoderFor(kind.bitsPerSample, 1))
        return 0;
    const std::size_t held = std::min<std::size_t>(frameCount(), samples().size() / frameSize);
    const std::size_t count = std::min(values.size(), held - std::min(first, held));
    for (std::size_t i = 0; i < count; ++i)
        values[i] = meantValue(samples().subspan(frameSize * (first + i) + sampleSize * channel),
                               kind.bitsPerSample);
    return count;
}

WAVE_FORMAT IRFile::format() const {
    if (!isOpen_)
        return {};
    return isFactory() ? factoryFormat : fmt_.format();
}

std::uint32_t IRFile::frameCount() const {
    if (!isOpen_)
        return 0;
    if (!isFactory())
        return framesIn(data_, format());
    return static_cast<std::uint32_t>(
        std::min(samples().size() / layout::factorySampleSize, irPointCount));
}

std::uint64_t IRFile::heldFrames() const {
    const WAVE_FORMAT kind = format();
    const std::uint64_t sampleSize = kind.bitsPerSample / 8u;
    const std::uint64_t frameSize = sampleSize * kind.channelCount;
    if (frameSize == 0)
        return 0;
    const std::uint64_t sampleBytes = sizeOnDisk_ - samplesInFile_;
    return std::min<std::uint64_t>(frameCount(),
                                   (sampleBytes + frameSize - sampleSize) / frameSize);
}

std::uint32_t IRFile::decodedPoints() const {
    if (isOpen_ && isFactory())
        return irPointCount;
    const IRRate* rate = findRate(sampleRate());
    return rate ? std::min(frameCount(), rate->cap) : 0;
}

} // namespace cabslot
