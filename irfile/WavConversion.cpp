#include "irfile/WavConversion.h"

#include "irfile/SampleFormat.h"

#include <algorithm>

namespace cabslot {

namespace {

std::string whyRateRefused(std::uint32_t rate) {
    return std::to_string(rate) + " Hz is not supported; " + supportedRates() + " are";
}

/// Decodes the first channel into `points`, padded with 0; on failure leaves them untouched.
std::string decode(const WAVE_FORMAT& format, std::uint32_t frames, SampleBytes samples,
                   std::span<std::uint32_t> points) {
    // Files with more than two channels decode to silence, whatever their depth. Kept, so that a
    // file sounds the same in every version.
    if (format.channelCount > 2) {
        std::ranges::fill(points, 0);
        return {};
    }
    const FrameDecoder decoder = decoderFor(format.bitsPerSample, format.channelCount);
    if (!decoder)
        return whyBitsRefused(format.bitsPerSample);
    const std::size_t count = std::min<std::size_t>(frames, points.size());
    decoder(samples, points.first(count));
    std::ranges::fill(points.subspan(count), 0);
    return {};
}

} // namespace

std::uint32_t framesIn(const DATA_BLOCK& data, const WAVE_FORMAT& format) {
    return data.size() / (format.bitsPerSample / 8u * format.channelCount);
}

std::string convertWav(const WAVE_FORMAT& format, std::uint32_t frames, SampleBytes samples,
                       std::span<std::uint32_t, irWorkCount> points,
                       std::span<std::uint32_t, irPointCount> destination) {
    const IRRate* rate = findRate(format.sampleRate);
    if (!rate)
        return whyRateRefused(format.sampleRate);
    if (rate->ratio == 0.0f)
        return decode(format, frames, samples, destination);
    if (std::string why = decode(format, frames, samples, points.first(rate->cap)); !why.empty())
        return why;
    ICovertoF(points, rate->sampleRate);
    Resample(EnterBufferF, rate->sampleRate);
    FCovertoI(ResampOut, destination);
    return {};
}

void decodeFactory(SampleBytes samples, std::span<std::uint32_t, irPointCount> destination) {
    decoderFor(sampleBits, 1)(samples, destination);
}

std::string whyBitsRefused(std::uint16_t bits) {
    return std::to_string(bits) +
           " bits per sample are not supported; 8, 16, 24 and 32 (float) are";
}

} // namespace cabslot
