// The layout of both file formats, and views for reading a WAV file.
//
//   WAV file             offset  size  field
//   start                0       4     "RIFF"
//                        4       4     size, not read
//                        8       4     form type, "WAVE"
//   "fmt " and "data"    0       4     the tag
//                        4       4     bytes that follow
//   "fmt " only          8       2     format tag
//                        10      2     channel count
//                        12      4     sample rate, Hz
//                        16      4     bytes per second
//                        20      2     bytes per frame
//                        22      2     bits per sample
//   "data" only          8             the samples, frame by frame
//
//   factory IR file      0       7     "VadelIR"
//                        7       1     row of FileNameBuff, 0 to 29
//                        8       504   not read
//                        512     3072  1024 samples of 24 bits
//
// All integers are little-endian. A view does not copy: it points into a file in memory, which must
// outlive it and hold all the bytes of the layout from there on.
#pragma once

#include "base/LittleEndian.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace cabslot {

namespace layout {

inline constexpr std::size_t tagSize = 4;
inline constexpr std::size_t chunkSize = 4;
inline constexpr std::size_t riffFormType = 8;
inline constexpr std::size_t riffHeaderSize = 12;
inline constexpr std::size_t fmtFormatTag = 8;
inline constexpr std::size_t fmtChannelCount = 10;
inline constexpr std::size_t fmtSampleRate = 12;
inline constexpr std::size_t fmtByteRate = 16;
inline constexpr std::size_t fmtBlockAlign = 20;
inline constexpr std::size_t fmtBitsPerSample = 22;
inline constexpr std::size_t fmtBlockSize = 24;
inline constexpr std::size_t dataSamples = 8;

inline constexpr std::string_view factoryMark = "VadelIR";
inline constexpr std::size_t factoryNameIndex = 7;
inline constexpr std::size_t factorySamples = 512;
inline constexpr std::size_t factorySampleSize = 3;

} // namespace layout

/// The format record of a WAV file.
struct WAVE_FORMAT {
    std::uint16_t formatTag = 0; ///< ignored: 32-bit files are float, all others integer
    std::uint16_t channelCount = 0;
    std::uint32_t sampleRate = 0; ///< Hz
    std::uint32_t byteRate = 0;
    std::uint16_t blockAlign = 0; ///< bytes per frame
    std::uint16_t bitsPerSample = 0;
};

/// The base of the three views: a 4-character tag and a size. Only a present view may be read.
class TaggedView {
public:
    TaggedView() = default;
    explicit TaggedView(const std::uint8_t* bytes) : bytes_(bytes) {}

    bool present() const { return bytes_ != nullptr; }
    const std::uint8_t* bytes() const { return bytes_; }
    std::string_view tag() const { return text(0); }
    std::uint32_t size() const { return number32(layout::chunkSize); }

protected:
    std::string_view text(std::size_t offset) const {
        return {reinterpret_cast<const char*>(bytes_ + offset), layout::tagSize};
    }
    std::uint16_t number16(std::size_t offset) const {
        return static_cast<std::uint16_t>(littleEndian(std::span(bytes_ + offset, 2)));
    }
    std::uint32_t number32(std::size_t offset) const {
        return littleEndian(std::span(bytes_ + offset, 4));
    }

    const std::uint8_t* bytes_ = nullptr;
};

/// The start of the file.
class RIFF_HEADER : public TaggedView {
public:
    using TaggedView::TaggedView;
    std::string_view formType() const { return text(layout::riffFormType); }
};

/// The "fmt " chunk.
class FMT_BLOCK : public TaggedView {
public:
    using TaggedView::TaggedView;
    WAVE_FORMAT format() const {
        return {number16(layout::fmtFormatTag),  number16(layout::fmtChannelCount),
                number32(layout::fmtSampleRate), number32(layout::fmtByteRate),
                number16(layout::fmtBlockAlign), number16(layout::fmtBitsPerSample)};
    }
};

/// The "data" chunk; size() is the file's claim, which may exceed what it holds.
class DATA_BLOCK : public TaggedView {
public:
    using TaggedView::TaggedView;
    const std::uint8_t* samples() const { return bytes_ + layout::dataSamples; }
};

} // namespace cabslot
