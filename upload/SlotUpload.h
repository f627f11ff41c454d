// One slot's upload: stage an IR, request the upload, wait until the frames are built, wait for the
// pedal's confirmation, record the slot's new state. Each front end passes in how it waits and what
// it shows meanwhile.
//
// Main thread; one upload at a time. The device thread must be running, and its IRNameArr must hold
// the four names (a slot's name is replaced in it).
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace cabslot {

class QNIRFile;

/// What an upload does between two polls of a flag.
class UploadWait {
public:
    virtual ~UploadWait() = default;

    /// Frames are still to be built. False gives the upload up.
    virtual bool waitForUpload() = 0;

    /// The pedal has not confirmed yet; `poll` counts from 0. False gives the upload up.
    virtual bool waitForConfirmation(std::uint32_t poll) = 0;
};

/// When `CheckMCUInportIR_Finish` is set to 1, which arms the wait for the confirmation.
enum class Arming {
    afterUpload,   ///< by the caller, after the upload wait: a pedal that confirms sooner is missed
    withLastFrame, ///< by the device thread, as it builds the last frame: nothing is missed, and a
                   ///< confirmation that comes before that frame is an older upload's
};

/// How long the wait for the confirmation is: so many polls, with this time between two.
inline constexpr std::uint32_t confirmationPollLimit = 600;
inline constexpr std::chrono::seconds pollPeriod{1};

struct UploadOptions {
    Arming arming = Arming::afterUpload;
    std::uint32_t confirmationPolls = confirmationPollLimit;

    /// Called, if set, when the slot has been recorded, confirmed or not. The file's block is still
    /// in irdatabuff.
    std::function<void(const QNIRFile& file)> recorded{};
};

enum class UploadEnd {
    confirmed,      ///< the pedal said that it has stored the IR
    notConfirmed,   ///< all polls are done; recorded as if confirmed
    givenUp,        ///< the wait said so; nothing recorded
    fileRefused,    ///< not a file to load; nothing sent
    samplesRefused, ///< a file whose samples cannot be used; nothing sent
};

/// The file was not sent; UploadResult::whyRefused tells a person why.
constexpr bool isRefused(UploadEnd end) {
    return end == UploadEnd::fileRefused || end == UploadEnd::samplesRefused;
}

struct UploadResult {
    UploadEnd end;
    std::string whyRefused;
};

/// Where an IR comes from.
struct IRSource {
    std::string path;                  ///< its last component gives the IR's name
    std::vector<std::uint8_t> bytes{}; ///< the file's content; empty: it is read from `path`
};

/// Loads an IR file into slot 1 to 4, under the name that its file name gives.
UploadResult loadSlot(std::uint32_t slot, const IRSource& source, const UploadOptions& options,
                      UploadWait& wait);

/// The blank IR in the bundle at `bundlePath`.
std::string blankIRPath(const std::string& bundlePath);

/// Clears slot 1 to 4: loads the blank IR of the bundle at `bundlePath` under the default name.
UploadResult clearSlot(std::uint32_t slot, const std::string& bundlePath,
                       const UploadOptions& options, UploadWait& wait);

} // namespace cabslot
