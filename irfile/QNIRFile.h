// Reads an IR file (a WAV file or one of the pedal's factory IR files) and stages it for upload.
//
// For each load, make one object and call OpenFilePath(), setIrdataBuff(), then copyIRName() or
// nullIRName(), and after the upload sendIsInternalIR(). Main thread, one load at a time, and never
// while isInportIR is set: the device thread then reads what these calls write.
//
// A call that fails returns false, and whyRefused() says why.
#pragma once

#include "irfile/IRConversion.h"
#include "irfile/WavLayout.h"

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace cabslot {

/// How much of a file may be read.
enum class Extent {
    asNeeded, ///< its first megabyte, or all of it if that does not suffice
    start,    ///< its first megabyte only, so that inspecting any file is quick
};

class QNIRFile {
public:
    static constexpr std::size_t nameFieldSize = sentNameSize;

    QNIRFile();
    QNIRFile(const QNIRFile&) = delete;
    QNIRFile& operator=(const QNIRFile&) = delete;

    /// Reads and checks the file; the last component of `path` gives the IR's name. Writes
    /// SendisInternalIR. Releases what was loaded before, even if this fails.
    bool OpenFilePath(const std::string& path);

    /// The same for inspecting a file: changes nothing that is sent.
    bool openForInspection(const std::string& path, Extent extent = Extent::asNeeded);

    /// OpenFilePath() with a file in memory; `path` only gives the name. `bytes` are not copied and
    /// must stay valid until the object is destroyed or loads another file.
    bool openBytes(std::span<const std::uint8_t> bytes, const std::string& path);

    /// Fills all of `destination`, or returns false and leaves it untouched.
    bool GetIRDataBuffer(std::span<std::uint32_t, irPointCount> destination);

    /// GetIRDataBuffer into irdatabuff.
    bool setIrdataBuff();

    /// Sends the loaded file's name and makes it the display name of `slot` (0 to 3).
    void copyIRName(std::int64_t slot) const;

    /// The same with the default name of `slot`, "User 1" to "User 4"; needs no loaded file.
    static void nullIRName(std::int64_t slot);

    /// Records whether the loaded file is a factory IR, for `slot` (0 to 3) and for sending.
    void sendIsInternalIR(std::int64_t slot) const;

    /// The loaded file is a factory IR.
    bool isInteralIR() const { return _isInteralIR; }
    void setIsInteralIR(bool factory) { _isInteralIR = factory; }

    /// Why the last OpenFilePath() or GetIRDataBuffer() failed: a clause to print after the file's
    /// path and a colon. Empty after a success.
    const std::string& whyRefused() const { return whyRefused_; }

    // Facts about the loaded file; all 0 if none is loaded.
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

    std::size_t heldBytes() const { return readBytes_ ? FileSize : 0; } ///< memory in use

    /// The whole file is in memory. Of a long file only the start is read.
    bool isHeldWhole() const { return heldWhole_; }

    /// Fills `values` with the samples of `channel` (0 is the first) from frame `first` on, full
    /// scale 1.0, including frames that the conversion does not use. Unlike the conversion, removes
    /// the offset of 8-bit samples and leaves floats unchanged. Returns how many it wrote: fewer
    /// than asked for at the end of what is in memory, none for an unsupported depth or a channel
    /// that the file does not have.
    std::size_t readChannel(std::uint16_t channel, std::size_t first,
                            std::span<float> values) const;
    std::size_t readFirstChannel(std::size_t first, std::span<float> values) const {
        return readChannel(0, first, values);
    }

    /// The name field that copyIRName() would send.
    std::array<std::uint8_t, nameFieldSize> nameField() const;

private:
    bool refuse(std::string why);
    bool refuseWav(std::string why);
    bool holdsItsPoints() const;
    void releaseFile();
    bool open(const std::string& path, Extent extent);
    bool examine(std::span<const std::uint8_t> file, const std::string& path);
    bool openFactoryFile();
    bool openWavFile(const std::string& path);
    bool findChunks();
    void setWavName(std::string_view name);
    bool countFrames();
    WAVE_FORMAT format() const;
    static std::string whyRateRefused(std::uint32_t rate);
    static std::string whyBitsRefused(std::uint16_t bits);

    std::span<const std::uint8_t> samples() const;
    bool decode(std::span<std::uint32_t> points);
    std::array<std::uint8_t, 20> sendField() const;

    std::array<std::int8_t, 20> CharFileNane;   ///< the IR's name, ended by a 0 byte
    bool IsFileOpenSuccess = false;             ///< a file is loaded
    std::unique_ptr<std::uint8_t[]> readBytes_; ///< owns pFileBuff if this object read it
    bool heldWhole_ = true;                     ///< of a long file only a part is in memory
    /// The file, or as much of its start as is needed; null if none is loaded.
    const std::uint8_t* pFileBuff = nullptr;
    std::uint32_t FileSize = 0;            ///< bytes in pFileBuff
    std::uint64_t sizeOnDisk_ = 0;         ///< bytes of the file, including the part not in memory
    std::uint32_t PointSize = 0;           ///< frames in the "data" chunk; WAV files only
    const std::uint8_t* pIRData = nullptr; ///< the first sample byte, in pFileBuff or at its end
    RIFF_HEADER riffheader;                ///< the start of a WAV file
    FMT_BLOCK fmt_block;                   ///< its "fmt " chunk
    DATA_BLOCK data_block;                 ///< its "data" chunk
    std::array<std::uint32_t, irWorkCount> IRPointBuffer; ///< decoded samples, 24 bits each
    bool _isInteralIR = false;                            ///< backs isInteralIR
    bool staging_ = true;                                 ///< SendisInternalIR follows the file
    std::string whyRefused_;
};

} // namespace cabslot
