// Reads one IR file, a WAV file or one of the pedal's factory IR files, and stages it for upload.
//
// Make one object a load and call OpenFilePath(), setIrdataBuff(), then copyIRName() or
// nullIRName(), and after the upload sendIsInternalIR(). All on the main thread, one load at a
// time, and none while isInportIR is set: the device thread then reads what these calls write.
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
    asNeeded, ///< its start; all of it, where that does not hold what is needed
    start,    ///< its first megabyte, so that a look at any file is quick
};

class QNIRFile {
public:
    static constexpr std::size_t nameFieldSize = sentNameSize;

    QNIRFile();
    QNIRFile(const QNIRFile&) = delete;
    QNIRFile& operator=(const QNIRFile&) = delete;

    /// Reads and checks the file; the last component of `path` gives the IR's name. Writes
    /// SendisInternalIR. What was loaded before is let go first, also when this fails.
    bool OpenFilePath(const std::string& path);

    /// The same for a look at the file: what is sent stays untouched.
    bool openForInspection(const std::string& path, Extent extent = Extent::asNeeded);

    /// OpenFilePath with a file that is in memory; `path` gives the name only. `bytes` are not
    /// copied and must stay until the object or what it has loaded is gone.
    bool openBytes(std::span<const std::uint8_t> bytes, const std::string& path);

    /// Fills all of `destination`, or returns false and leaves it untouched.
    bool GetIRDataBuffer(std::span<std::uint32_t, irPointCount> destination);

    /// GetIRDataBuffer into irdatabuff.
    bool setIrdataBuff();

    /// Makes the loaded file's name the one that is sent, and the display name of `slot` (0 to 3).
    void copyIRName(std::int64_t slot) const;

    /// The same with the default name of `slot`, "User 1" to "User 4"; needs no loaded file.
    static void nullIRName(std::int64_t slot);

    /// Records for `slot` (0 to 3) and for sending whether the loaded file is a factory IR.
    void sendIsInternalIR(std::int64_t slot) const;

    /// The loaded file is a factory IR.
    bool isInteralIR() const { return _isInteralIR; }
    void setIsInteralIR(bool factory) { _isInteralIR = factory; }

    /// Why the last OpenFilePath() or GetIRDataBuffer() said no: a clause for the user to follow
    /// the file's path and a colon. Empty after a success.
    const std::string& whyRefused() const { return whyRefused_; }

    // What the loaded file is; all 0 when none is loaded.
    std::uint32_t sampleRate() const { return format().sampleRate; }       ///< Hz; factory: 44100
    std::uint16_t channelCount() const { return format().channelCount; }   ///< factory: 1
    std::uint16_t bitsPerSample() const { return format().bitsPerSample; } ///< factory: 24
    std::uint32_t frameCount() const;    ///< as a WAV file claims; as a factory file holds, to 1024
    std::uint64_t heldFrames() const;    ///< of these, the ones whose first sample is in the file
    std::uint32_t decodedPoints() const; ///< points that are filled; factory: 1024; other rates: 0

    /// The first of "fmt " and "data" that was found inside another chunk, and that chunk; both
    /// empty when none was. The file is read from there all the same.
    struct MisplacedTag {
        std::string tag;
        std::string insideOf;
    };
    MisplacedTag misplacedTag() const;

    std::size_t heldBytes() const { return readBytes_ ? FileSize : 0; } ///< memory the file takes

    /// Nothing follows what is in memory. Of a long file only the start is read.
    bool isHeldWhole() const { return heldWhole_; }

    /// Fills `values` with what the file means by the samples of `channel` (0 is the first) from
    /// frame `first` on, full scale 1.0, also of frames beyond those that are used. Unlike the
    /// conversion it takes the offset off 8-bit samples and leaves floats as they are. Returns how
    /// many were there: fewer than asked for at the end of what is in memory, none of a depth that
    /// cannot be read or a channel that the file does not have.
    std::size_t readChannel(std::uint16_t channel, std::size_t first,
                            std::span<float> values) const;
    std::size_t readFirstChannel(std::size_t first, std::span<float> values) const {
        return readChannel(0, first, values);
    }

    /// The name as copyIRName() would send it.
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
    std::unique_ptr<std::uint8_t[]> readBytes_; ///< behind pFileBuff, when this object has read it
    bool heldWhole_ = true;                     ///< of a long file only a part is in memory
    /// The file, or its first part that has all that is needed; null when none is loaded.
    const std::uint8_t* pFileBuff = nullptr;
    std::uint32_t FileSize = 0;            ///< bytes in pFileBuff
    std::uint64_t sizeOnDisk_ = 0;         ///< bytes of the file, also of the part not in memory
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
