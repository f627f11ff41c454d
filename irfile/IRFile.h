// An IR file (a WAV file or one of the pedal's factory IR files), read and examined. A value:
// reading changes nothing outside it, and copies share the bytes. Any thread.
//
// A file that cannot be used gives a value that knows nothing but the reason.
#pragma once

#include "irfile/IR.h"
#include "irfile/WavLayout.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace cabslot {

/// How much of a file may be read.
enum class Extent {
    asNeeded, ///< its first megabyte, or all of it if that does not suffice
    start,    ///< its first megabyte only, so that inspecting any file is quick
};

class IRFile {
public:
    enum class Kind {
        unknown, ///< not read, or too short to tell
        wav,     ///< anything that is not a factory IR file, even if it was refused
        factory,
    };

    IRFile() = default; ///< no file

    /// Reads and checks the file; the last component of `path` gives the IR's name.
    static IRFile read(const std::string& path, Extent extent = Extent::asNeeded);

    /// The same for a file in memory, which is copied; `path` only gives the name.
    static IRFile of(std::span<const std::uint8_t> bytes, const std::string& path);

    bool isOpen() const { return isOpen_; }
    Kind kind() const { return kind_; }
    bool isFactory() const { return kind_ == Kind::factory; }

    /// Why it is not open: a clause to print after the file's path and a colon.
    const std::string& whyRefused() const { return whyRefused_; }

    /// The IR's name, without padding: up to 10 characters, or a factory IR's 15.
    std::string_view name() const { return name_; }

    // Facts about an open file; all 0 if it is not.
    std::uint32_t sampleRate() const { return format().sampleRate; }       ///< Hz; factory: 44100
    std::uint16_t channelCount() const { return format().channelCount; }   ///< factory: 1
    std::uint16_t bitsPerSample() const { return format().bitsPerSample; } ///< factory: 24
    std::uint32_t frameCount() const; ///< a WAV file's claim; a factory file's points, 1024 at most
    std::uint64_t heldFrames() const; ///< of these, those whose first sample is in the file
    std::uint32_t decodedPoints() const; ///< points filled; factory: 1024; unsupported rate: 0

    /// The first of "fmt " and "data" that was found inside another chunk, and that chunk; both
    /// empty if none was. The file is read from there anyway.
    struct MisplacedTag {
        std::string tag;
        std::string insideOf;
    };
    MisplacedTag misplacedTag() const;

    /// The whole file is in memory. Of a long file only the start is read.
    bool isHeldWhole() const { return size_ == sizeOnDisk_; }

    /// What is in memory, and in it: the three views, of a WAV file only, and the bytes from the
    /// first sample on.
    std::span<const std::uint8_t> bytes() const { return {bytes_.get(), size_}; }
    RIFF_HEADER riffHeader() const { return riff_; }
    FMT_BLOCK formatBlock() const { return fmt_; }
    DATA_BLOCK dataBlock() const { return data_; }
    std::span<const std::uint8_t> samples() const { return bytes().subspan(samplesAt_); }

    /// Fills `values` with the samples of `channel` (0 is the first) from frame `first` on, full
    /// scale 1.0, including frames that the conversion does not use. Unlike the conversion, removes
    /// the offset of 8-bit samples and leaves floats unchanged. Returns how many it wrote: fewer
    /// than asked for at the end of what is in memory, none for an unsupported depth or a channel
    /// that the file does not have.
    std::size_t readChannel(std::uint16_t channel, std::size_t first,
                            std::span<float> values) const;

    /// Converts the samples into the pedal's block. Returns why that is impossible, and leaves
    /// `block` untouched, or an empty text.
    std::string convertTo(Block& block) const;

private:
    void hold(std::unique_ptr<std::uint8_t[]> bytes, std::size_t size, std::uint64_t sizeOnDisk);
    void examine(const std::string& path);
    bool refuse(std::string why);
    bool refuseWav(std::string why);
    bool openFactoryFile();
    bool openWavFile(const std::string& path);
    bool findChunks();
    bool checkFormat();
    bool holdsItsPoints() const;
    WAVE_FORMAT format() const;

    Kind kind_ = Kind::unknown;
    bool isOpen_ = false;
    std::string whyRefused_;
    std::string name_;
    std::shared_ptr<const std::uint8_t[]>
        bytes_; ///< the file, or as much of its start as is needed
    std::size_t size_ = 0;
    std::uint64_t sizeOnDisk_ = 0; ///< including the part that is not in memory
    std::size_t samplesAt_ = 0;    ///< where the first sample is in `bytes_`, or their end
    RIFF_HEADER riff_;             ///< these point into `bytes_`
    FMT_BLOCK fmt_;
    DATA_BLOCK data_;
};

/// An IR file, read and converted.
struct ReadIR {
    IRFile file;            ///< not open if the file itself was refused
    IR ir{};                ///< what the pedal would get; empty if refused
    std::string whyRefused; ///< a clause to print after the path and a colon; empty: it can be used

    explicit operator bool() const { return whyRefused.empty(); }
};

/// Reads and converts the file at `path`. Every command and the window begin with this.
ReadIR readIR(const std::string& path, Extent extent = Extent::asNeeded);

/// The same for a file that was read before.
ReadIR readIR(IRFile file, const std::string& path);

} // namespace cabslot
