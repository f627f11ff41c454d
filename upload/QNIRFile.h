// Stages an IR file for the device thread. What the file holds comes from IRFile.
//
// For each load, make one object and call OpenFilePath(), setIrdataBuff(), then copyIRName() or
// nullIRName(), and after the upload sendIsInternalIR(). Main thread, one load at a time, and never
// while isInportIR is set: the device thread then reads what these calls write.
//
// A call that fails returns false, and whyRefused() says why.
#pragma once

#include "irfile/IRConversion.h"
#include "irfile/IRFile.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace cabslot {

class QNIRFile {
public:
    QNIRFile();
    QNIRFile(const QNIRFile&) = delete;
    QNIRFile& operator=(const QNIRFile&) = delete;

    /// Reads and checks the file; the last component of `path` gives the IR's name. Writes
    /// SendisInternalIR. Releases what was loaded before, even if this fails.
    bool OpenFilePath(const std::string& path);

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

    /// What OpenFilePath() read.
    const IRFile& file() const { return file_; }

private:
    void takeName();

    IRFile file_; ///< owns what the pointers and views below refer to

    std::array<std::int8_t, 20> CharFileNane; ///< the IR's name, ended by a 0 byte
    bool IsFileOpenSuccess = false;           ///< a file is loaded
    /// The file, or as much of its start as is needed; null if none is loaded.
    const std::uint8_t* pFileBuff = nullptr;
    std::uint32_t FileSize = 0;            ///< bytes in pFileBuff
    std::uint32_t PointSize = 0;           ///< frames in the "data" chunk; WAV files only
    const std::uint8_t* pIRData = nullptr; ///< the first sample byte, in pFileBuff or at its end
    RIFF_HEADER riffheader;                ///< the start of a WAV file
    FMT_BLOCK fmt_block;                   ///< its "fmt " chunk
    DATA_BLOCK data_block;                 ///< its "data" chunk
    std::array<std::uint32_t, irWorkCount> IRPointBuffer; ///< decoded samples, 24 bits each
    bool _isInteralIR = false;                            ///< backs isInteralIR
    std::string whyRefused_;
};

} // namespace cabslot
