#include "irfile/QNIRFile.h"

#include "device/SharedState.h"
#include "irfile/RiffChunks.h"
#include "irfile/SampleDecoding.h"

#include <algorithm>
#include <utility>

namespace cabslot {

namespace {

constexpr std::uint16_t pointBits = 24;
constexpr WAVE_FORMAT factoryFormat = {1, 1, 44100, 132300, 3, pointBits};

} // namespace

bool QNIRFile::setIrdataBuff() {
    return GetIRDataBuffer(irdatabuff);
}

bool QNIRFile::GetIRDataBuffer(std::span<std::uint32_t, irPointCount> destination) {
    whyRefused_.clear();
    if (!IsFileOpenSuccess) {
        whyRefused_ = "no file is loaded";
        return false;
    }
    if (_isInteralIR) {
        decoderFor(pointBits, 1)(samples(), destination);
        return true;
    }

    const IRRate* rate = findRate(sampleRate());
    if (!rate) {
        whyRefused_ = whyRateRefused(sampleRate());
        return false;
    }
    if (rate->ratio == 0.0f)
        return decode(destination);
    if (!decode(std::span(IRPointBuffer).first(rate->cap)))
        return false;
    ICovertoF(IRPointBuffer, rate->sampleRate);
    Resample(EnterBufferF, rate->sampleRate);
    FCovertoI(ResampOut, destination);
    return true;
}

/// Decodes the first channel into `points`, padded with 0; on failure leaves them untouched.
bool QNIRFile::decode(std::span<std::uint32_t> points) {
    const WAVE_FORMAT wav = format();
    // As in the pedal's own tool, files with more than two channels decode to silence, whatever
    // their depth.
    if (wav.channelCount > 2) {
        std::ranges::fill(points, 0);
        return true;
    }
    const FrameDecoder decoder = decoderFor(wav.bitsPerSample, wav.channelCount);
    if (!decoder) {
        whyRefused_ = whyBitsRefused(wav.bitsPerSample);
        return false;
    }
    const std::size_t count = std::min<std::size_t>(PointSize, points.size());
    decoder(samples(), points.first(count));
    std::ranges::fill(points.subspan(count), 0);
    return true;
}

std::size_t QNIRFile::readChannel(std::uint16_t channel, std::size_t first,
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

/// From the first sample byte to the end of the file.
std::span<const std::uint8_t> QNIRFile::samples() const {
    return {pIRData, pFileBuff + FileSize};
}

std::string QNIRFile::whyRateRefused(std::uint32_t rate) {
    return std::to_string(rate) + " Hz is not supported; " + std::string(supportedRates) + " are";
}

std::string QNIRFile::whyBitsRefused(std::uint16_t bits) {
    return std::to_string(bits) +
           " bits per sample are not supported; 8, 16, 24 and 32 (float) are";
}

WAVE_FORMAT QNIRFile::format() const {
    if (!IsFileOpenSuccess)
        return {};
    if (_isInteralIR)
        return factoryFormat;
    return fmt_block.present() ? fmt_block.format() : WAVE_FORMAT{};
}

std::uint32_t QNIRFile::frameCount() const {
    if (!IsFileOpenSuccess)
        return 0;
    if (!_isInteralIR)
        return PointSize;
    return static_cast<std::uint32_t>(
        std::min(samples().size() / layout::factorySampleSize, irPointCount));
}

std::uint64_t QNIRFile::heldFrames() const {
    const WAVE_FORMAT kind = format();
    const std::uint64_t sampleSize = kind.bitsPerSample / 8u;
    const std::uint64_t frameSize = sampleSize * kind.channelCount;
    if (frameSize == 0)
        return 0;
    const std::uint64_t sampleBytes = sizeOnDisk_ - static_cast<std::uint64_t>(pIRData - pFileBuff);
    return std::min<std::uint64_t>(frameCount(),
                                   (sampleBytes + frameSize - sampleSize) / frameSize);
}

QNIRFile::MisplacedTag QNIRFile::misplacedTag() const {
    const std::span<const std::uint8_t> file(pFileBuff, FileSize);
    for (const TaggedView& view : {TaggedView(fmt_block), TaggedView(data_block)}) {
        if (!view.present())
            continue;
        std::string around = chunkAround(file, static_cast<std::size_t>(view.bytes() - pFileBuff));
        if (!around.empty())
            return {std::string(view.tag()), std::move(around)};
    }
    return {};
}

std::uint32_t QNIRFile::decodedPoints() const {
    if (IsFileOpenSuccess && _isInteralIR)
        return irPointCount;
    const IRRate* rate = findRate(sampleRate());
    return rate ? std::min(PointSize, rate->cap) : 0;
}

} // namespace cabslot
