// One slot's road: stage an IR, ask for its upload, wait for the frames, wait for the pedal's
// confirmation, record. The window and the command line run this same code; how they wait, and
// what they show meanwhile, they pass in.
//
// Main thread; one road at a time. The device thread must be running, and its IRNameArr must hold
// the four names (a slot's name is replaced in it).
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace cabslot {

class QNIRFile;

/// What a road does between two looks at a flag.
class RoadWaiting {
public:
    virtual ~RoadWaiting() = default;

    /// While frames are still to be sent. False gives the road up.
    virtual bool waitForUpload() = 0;

    /// While the pedal has not confirmed; `poll` counts from 0. False gives the road up.
    virtual bool waitForConfirmation(std::uint32_t poll) = 0;
};

/// When the wait for the confirmation is armed (`CheckMCUInportIR_Finish` set to 1).
enum class Arming {
    afterUpload,   ///< once the upload wait has ended: a pedal that confirms sooner is missed
    beforeRequest, ///< before the upload is asked for: no confirmation that follows the last frame
                   ///< is missed, and one that comes before it, of an older upload, does not count
};

struct RoadOptions {
    Arming arming = Arming::afterUpload;
    std::uint32_t confirmationPolls = 600; ///< at most so many waits for the confirmation

    /// If set, told of the file when the slot has been recorded, confirmed or not; its block still
    /// is in irdatabuff.
    std::function<void(const QNIRFile& file)> recorded{};
};

enum class RoadEnd {
    confirmed,      ///< the pedal said that it has stored the IR
    notConfirmed,   ///< all polls are done; recorded as if confirmed
    givenUp,        ///< the waiting said so; nothing recorded
    fileRefused,    ///< not a file to load; nothing sent
    samplesRefused, ///< a file whose samples cannot be used; nothing sent
};

struct RoadResult {
    RoadEnd end;
    std::string whyRefused; ///< for a person; empty unless refused
};

/// Loads the IR file at `path` into slot 1 to 4, under the name that its file name gives.
RoadResult loadSlot(std::uint32_t slot, const std::string& path, const RoadOptions& options,
                    RoadWaiting& waiting);

/// The blank IR in the bundle at `bundlePath`.
std::string blankIRPath(const std::string& bundlePath);

/// Clears slot 1 to 4: loads the blank IR of the bundle at `bundlePath` under the default name.
RoadResult clearSlot(std::uint32_t slot, const std::string& bundlePath, const RoadOptions& options,
                     RoadWaiting& waiting);

} // namespace cabslot
