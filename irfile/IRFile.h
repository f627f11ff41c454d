// An IR file (a WAV file or one of the pedal's factory IR files), read and examined. A value:
// reading changes nothing outside it, and copies share the bytes. Any thread.
//
// A file that cannot be used gives a value that knows nothing but the reason.
#pragma once

#include "base/StopCheck.h"
#include "irfile/IR.h"
#include "irfile/WavLayout.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cabslot {

/// How much of a file may be read.
enum class Extent {
    asNeeded, ///< all of it is searched, in parts
    start,    ///< its first megabyte only, so that inspecting any file is quick
};

class FileWindow;

class IRFile {
public:
    enum class Kind {
        unknown, ///< not read, or too short to be recognised
        wav,     ///< anything that is not a factory IR file, even if it was refused
        factory,
    };

    IRFile() = default; ///< no file

    /// Reads and checks the file; the last component of `path` gives the IR's name. Takes at most
    /// four megabytes of memory, and gives up soon after `stop` returns true. `namePath`, unless
    /// empty, is a path that gives the name instead.
    static IRFile read(const std::string& path, const StopCheck& stop = {},
                       Extent extent = Extent::asNeeded, const std::string& namePath = {});

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
    const MisplacedTag& misplacedTag() const { return misplaced_; }

    /// All bytes from the first sample to the file's end are in memory. Of a long file only a part
    /// is.
    bool holdsAllSamples() const { return samplesInFile_ + samples().size() == sizeOnDisk_; }

    /// What is in memory: the whole file, or of a long one its first megabyte, followed by what is
    /// needed from elsewhere. In it: the three views, of a WAV file only, and the bytes from the
    /// first sample on, at most a megabyte.
    std::span<const std::uint8_t> bytes() const {
        return bytes_ ? std::span<const std::uint8_t>(*bytes_) : std::span<const std::uint8_t>();
    }
    RIFF_HEADER riffHeader() const {
        return kind_ == Kind::wav && bytes_ ? RIFF_HEADER(bytes().data()) : RIFF_HEADER();
    }
    FMT_BLOCK formatBlock() const { return fmt_; }
    DATA_BLOCK dataBlock() const { return data_; }
    std::span<const std::uint8_t> samples() const {
        return bytes().subspan(samplesAt_, samplesEnd_ - samplesAt_);
    }

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
    static IRFile examined(FileWindow& file, const std::string& path, Extent extent);
    std::string openFactoryFile();
    std::string openWavFile(FileWindow& file, const std::string& path, Extent extent);
    std::string findChunks(FileWindow& file, Extent extent);
    void noteMisplaced(FileWindow& file, std::string_view tag, std::uint64_t position);
    void take(FileWindow& file, std::uint64_t fmt, std::uint64_t data);
    std::string whyFormatRefused() const;
    WAVE_FORMAT format() const;

    Kind kind_ = Kind::unknown;
    bool isOpen_ = false;
    std::string whyRefused_;
    std::string name_;
    std::shared_ptr<std::vector<std::uint8_t>> bytes_; ///< written only while it is opened
    std::uint64_t sizeOnDisk_ = 0;    ///< including the parts that are not in memory
    std::uint64_t samplesInFile_ = 0; ///< where the first sample is in the file, or its end
    std::size_t samplesAt_ = 0;       ///< the same in `bytes_`
    std::size_t samplesEnd_ = 0;      ///< the end of the samples in `bytes_`
    FMT_BLOCK fmt_;                   ///< these point into `bytes_`
    DATA_BLOCK data_;
    MisplacedTag misplaced_;
};

/// An IR file, read and converted.
struct ReadIR {
    IRFile file;            ///< not open if the file itself was refused
    IR ir{};                ///< what the pedal would get; empty if refused
    std::string whyRefused; ///< a clause to print after the path and a colon; empty: it can be used

    explicit operator bool() const { return whyRefused.empty(); }
};

/// Reads and converts the file at `path`. Every command and the window begin with this.
ReadIR readIR(const std::string& path, const StopCheck& stop = {},
              Extent extent = Extent::asNeeded);

/// The same under the name `name`, whatever the file is called. checkSlotName() must accept it.
ReadIR readIRAs(const std::string& name, const std::string& path, const StopCheck& stop = {},
                Extent extent = Extent::asNeeded);

/// The same for a file that was read before.
ReadIR readIR(IRFile file, const std::string& path);

} // namespace cabslot
