// Builds WAV files and factory IR files, good and bad.
#pragma once

#include "tests/support/Files.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <string>

namespace cabslot::testing {

/// Appends the low `width` bytes of `value` to `bytes`, lowest first.
inline void appendLittleEndian(std::string& bytes, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

/// A RIFF chunk: tag, size, body.
inline std::string chunk(const std::string& tag, const std::string& body) {
    std::string bytes = tag;
    appendLittleEndian(bytes, static_cast<std::uint32_t>(body.size()), 4);
    return bytes + body;
}

/// Set the fields, append samples frame by frame, call bytes().
struct WavBuilder {
    std::uint32_t rate = 44100;
    std::uint16_t channels = 1;
    std::uint16_t bits = 16;
    std::uint16_t formatTag = 1;
    std::string samples{};

    // Unusual content for a file.
    std::string riff = "RIFF";
    std::string form = "WAVE";
    std::string formatTail{};                ///< after the 16 bytes of "fmt "
    bool liesAboutBytes = false;             ///< wrong byte rate and block align
    std::string beforeFormat{};              ///< whole chunks
    std::string beforeData{};                ///< whole chunks
    std::string afterData{};                 ///< whole chunks
    std::optional<std::uint32_t> dataSize{}; ///< the size that "data" claims, if not the true one

    /// One sample, in the width set by `bits`.
    WavBuilder& add(std::int32_t sample) {
        appendLittleEndian(samples, static_cast<std::uint32_t>(sample), bits / 8);
        return *this;
    }
    WavBuilder& addFloat(float sample) {
        appendLittleEndian(samples, std::bit_cast<std::uint32_t>(sample), 4);
        return *this;
    }

    std::string bytes() const {
        const auto frameSize = static_cast<std::uint16_t>(bits / 8 * channels);
        std::string format;
        appendLittleEndian(format, formatTag, 2);
        appendLittleEndian(format, channels, 2);
        appendLittleEndian(format, rate, 4);
        appendLittleEndian(format, liesAboutBytes ? 77 : rate * frameSize, 4);
        appendLittleEndian(format, liesAboutBytes ? 99 : frameSize, 2);
        appendLittleEndian(format, bits, 2);
        format += formatTail;

        std::string data = "data";
        appendLittleEndian(data, dataSize.value_or(static_cast<std::uint32_t>(samples.size())), 4);
        const std::string body =
            form + beforeFormat + chunk("fmt ", format) + beforeData + data + samples + afterData;
        std::string file = riff;
        appendLittleEndian(file, static_cast<std::uint32_t>(body.size()), 4);
        return file + body;
    }
};

/// A factory IR file: name index `index`, then `samples` from byte 512 on.
inline std::string factoryFile(std::uint8_t index, const std::string& samples) {
    std::string bytes = "VadelIR";
    bytes += static_cast<char>(index);
    bytes.resize(512, '\x55');
    return bytes + samples;
}

} // namespace cabslot::testing
