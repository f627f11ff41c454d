// Uploads one slot: stages an IR, requests the upload, waits until the frames are built, waits for
// the pedal's confirmation, records the slot's new state. Each front end passes in how to wait and
// what to show meanwhile.
//
// Main thread; one upload at a time. The device thread must be running, and IRNameArr must hold the
// four names, because the slot's name is replaced in it.
#pragma once

#include "irfile/IR.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace cabslot {

class IRFile;

/// What an upload does between two polls of a flag.
class UploadWait {
public:
    virtual ~UploadWait() = default;

    /// Called while frames are still to be built. False abandons the upload.
    virtual bool waitForUpload() = 0;

    /// Called while the pedal has not confirmed; `poll` counts from 0. False abandons the upload.
    virtual bool waitForConfirmation(std::uint32_t poll) = 0;

    /// Asked before each poll for the confirmation. True ends the wait as the last poll would.
    virtual bool isEnough() { return false; }
};

/// When `CheckMCUInportIR_Finish` is set to 1, which starts the wait for the confirmation.
enum class Arming {
    afterUpload,   ///< by the caller, after the upload wait: misses a pedal that confirms sooner
    withLastFrame, ///< by the device thread with the last frame: misses nothing, and ignores an
                   ///< earlier confirmation, which belongs to an older upload
};

/// The longest wait for the confirmation: this many polls, with this time between two.
inline constexpr std::uint32_t confirmationPollLimit = 600;
inline constexpr std::chrono::seconds pollPeriod{1};

struct UploadOptions {
    Arming arming = Arming::afterUpload;
    std::uint32_t confirmationPolls = confirmationPollLimit;

    /// If set, called when the slot has been recorded, confirmed or not, with the file if there is
    /// one. irdatabuff still holds what was sent.
    std::function<void(const IRFile* file)> recorded{};
};

enum class UploadEnd {
    confirmed,      ///< the pedal reported that it has stored the IR
    notConfirmed,   ///< all polls are done; recorded as if confirmed
    givenUp,        ///< UploadWait returned false; nothing recorded. Frames may still be sent: the
                    ///< next upload waits for the last of them before it stages anything
    fileRefused,    ///< the file cannot be loaded; nothing sent
    samplesRefused, ///< its samples cannot be used; nothing sent
};

/// The file was not sent; UploadResult::whyRefused holds the reason.
constexpr bool isRefused(UploadEnd end) {
    return end == UploadEnd::fileRefused || end == UploadEnd::samplesRefused;
}

struct UploadResult {
    UploadEnd end;
    std::string whyRefused;
};

/// Loads an IR file into slot 1 to 4, under the name derived from its path.
UploadResult loadSlot(std::uint32_t slot, const std::string& path, const UploadOptions& options,
                      UploadWait& wait);

/// Loads `ir` into slot 1 to 4, under its own name; never refused.
UploadResult loadSlot(std::uint32_t slot, const IR& ir, const UploadOptions& options,
                      UploadWait& wait);

/// The IR that was staged last, as it is sent; `source` is the file it came from.
IR stagedIR(const std::string& source);

/// The path of the blank IR in the bundle at `bundlePath`.
std::string blankIRPath(const std::string& bundlePath);

/// Clears slot 1 to 4: loads the blank IR of the bundle at `bundlePath` under the default name.
UploadResult clearSlot(std::uint32_t slot, const std::string& bundlePath,
                       const UploadOptions& options, UploadWait& wait);

} // namespace cabslot
