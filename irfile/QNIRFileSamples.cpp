#include "irfile/QNIRFile.h"

#include "device/SharedState.h"

#include <algorithm>
#include <bit>

namespace cabslot {

namespace {

constexpr std::uint16_t pointBits = 24;
constexpr std::uint16_t floatBits = 32;
constexpr WAVE_FORMAT factoryFormat = {1, 1, 44100, 132300, 3, pointBits};

constexpr std::uint32_t pointMask = 0xFFFFFF;
constexpr std::uint32_t pointSign = 0x800000;

constexpr bool isSupportedDepth(std::uint16_t bits) {
    return bits == 8 || bits == 16 || bits == pointBits || bits == floatBits;
}

/// The sample of `width` bytes at `offset`; bytes past the end of `samples` count as 0.
std::uint32_t sampleAt(std::span<const std::uint8_t> samples, std::size_t offset,
                       std::size_t width) {
    if (offset >= samples.size())
        return 0;
    return littleEndian(samples.subspan(offset, std::min(width, samples.size() - offset)));
}

std::uint32_t floatPoint(std::uint32_t bits) {
    const std::int32_t value = scaleToInteger(std::bit_cast<float>(bits));
    const auto point = static_cast<std::uint32_t>(value);
    // Kept on purpose: only negative samples are cut to 24 bits, 2.0 and more leave higher bits
    // set.
    return value < 0 ? (point & pointMask) | pointSign : point;
}

/// The value that a file means by a sample of `bits` bits, full scale 1.0.
float meantValue(std::uint32_t sample, unsigned bits) {
    if (bits == floatBits)
        return std::bit_cast<float>(sample);
    constexpr float fullScale = 2147483648.0f;
    constexpr std::uint32_t offset8 = 0x80000000; // a WAV file's 8-bit samples count from 128
    const std::uint32_t raised = (sample << (32 - bits)) ^ (bits == 8 ? offset8 : 0);
    return static_cast<float>(static_cast<std::int32_t>(raised)) / fullScale;
}

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
        for (std::size_t i = 0; i < irPointCount; ++i)
            destination[i] =
                sampleAt(samples(), layout::factorySampleSize * i, layout::factorySampleSize);
        return true;
    }

    IRPointBuffer.fill(0);
    const IRRate* rate = findRate(sampleRate());
    if (!rate) {
        whyRefused_ = whyRateRefused(sampleRate());
        return false;
    }
    if (!decode(format(), std::min(PointSize, rate->cap)))
        return false;
    if (rate->ratio == 0.0f) {
        std::copy_n(IRPointBuffer.begin(), irPointCount, destination.begin());
        return true;
    }
    ICovertoF(IRPointBuffer, rate->sampleRate);
    Resample(EnterBufferF, rate->sampleRate);
    FCovertoI(ResampOut, destination);
    return true;
}

/// Decodes the first channel of `count` frames into IRPointBuffer.
bool QNIRFile::decode(const WAVE_FORMAT& format, std::uint32_t count) {
    // Kept on purpose: more than two channels decode to silence, whatever their depth.
    if (format.channelCount > 2)
        return true;
    if (!isSupportedDepth(format.bitsPerSample)) {
        whyRefused_ = whyBitsRefused(format.bitsPerSample);
        return false;
    }
    const std::size_t sampleSize = format.bitsPerSample / 8u;
    const std::size_t frameSize = sampleSize * format.channelCount;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t sample = sampleAt(samples(), frameSize * i, sampleSize);
        // Kept on purpose: 8-bit samples are shifted up like all others, their offset of 128 stays.
        IRPointBuffer[i] = format.bitsPerSample == floatBits
                               ? floatPoint(sample)
                               : sample << (pointBits - format.bitsPerSample);
    }
    return true;
}

std::size_t QNIRFile::readFirstChannel(std::size_t first, std::span<float> values) const {
    const WAVE_FORMAT kind = format();
    if (!isSupportedDepth(kind.bitsPerSample))
        return 0;
    const std::size_t sampleSize = kind.bitsPerSample / 8u;
    const std::size_t frameSize = sampleSize * kind.channelCount;
    const std::size_t held = std::min<std::size_t>(frameCount(), samples().size() / frameSize);
    const std::size_t count = std::min(values.size(), held - std::min(first, held));
    for (std::size_t i = 0; i < count; ++i)
        values[i] = meantValue(sampleAt(samples(), frameSize * (first + i), sampleSize),
                               kind.bitsPerSample);
    return count;
}

/// From the first sample byte to the end of the file.
std::span<const std::uint8_t> QNIRFile::samples() const {
    return {pIRData, static_cast<const std::uint8_t*>(pFileBuff.get() + FileSize)};
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

std::uint32_t QNIRFile::decodedPoints() const {
    if (IsFileOpenSuccess && _isInteralIR)
        return irPointCount;
    const IRRate* rate = findRate(sampleRate());
    return rate ? std::min(PointSize, rate->cap) : 0;
}

} // namespace cabslot
