// One slot's upload: stage an IR, ask for its upload, wait for the frames, wait for the pedal's
// confirmation, record. The window and the command line run this same code; how they wait, and
// what they show meanwhile, they pass in.
//
// Main thread; one upload at a time. The device thread must be running, and its IRNameArr must hold
// the four names (a slot's name is replaced in it).
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace cabslot {

class QNIRFile;

/// What an upload does between two looks at a flag.
class UploadWait {
public:
    virtual ~UploadWait() = default;

    /// While frames are still to be sent. False gives the upload up.
    virtual bool waitForUpload() = 0;

    /// While the pedal has not confirmed; `poll` counts from 0. False gives the upload up.
    virtual bool waitForConfirmation(std::uint32_t poll) = 0;
};

/// When the wait for the confirmation is armed (`CheckMCUInportIR_Finish` set to 1).
enum class Arming {
    afterUpload,   ///< once the upload wait has ended: a pedal that confirms sooner is missed
    beforeRequest, ///< before the upload is asked for: no confirmation that follows the last frame
                   ///< is missed, and one that comes before it, of an older upload, does not count
};

struct UploadOptions {
    Arming arming = Arming::afterUpload;
    std::uint32_t confirmationPolls = 600; ///< at most so many waits for the confirmation

    /// If set, told of the file when the slot has been recorded, confirmed or not; its block still
    /// is in irdatabuff.
    std::function<void(const QNIRFile& file)> recorded{};
};

enum class UploadEnd {
    confirmed,      ///< the pedal said that it has stored the IR
    notConfirmed,   ///< all polls are done; recorded as if confirmed
    givenUp,        ///< the waiting said so; nothing recorded
    fileRefused,    ///< not a file to load; nothing sent
    samplesRefused, ///< a file whose samples cannot be used; nothing sent
};

struct UploadResult {
    UploadEnd end;
    std::string whyRefused; ///< for a person; empty unless refused
};

/// Loads the IR file at `path` into slot 1 to 4, under the name that its file name gives.
UploadResult loadSlot(std::uint32_t slot, const std::string& path, const UploadOptions& options,
                      UploadWait& waiting);

/// The blank IR in the bundle at `bundlePath`.
std::string blankIRPath(const std::string& bundlePath);

/// Clears slot 1 to 4: loads the blank IR of the bundle at `bundlePath` under the default name.
UploadResult clearSlot(std::uint32_t slot, const std::string& bundlePath,
                       const UploadOptions& options, UploadWait& waiting);

} // namespace cabslot
