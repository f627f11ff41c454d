#include "upload/SlotRoad.h"

#include "device/SharedState.h"
#include "irfile/QNIRFile.h"

namespace cabslot {

namespace {

// True when the device thread has built the last frame; false when the road was given up.
bool waitUntilUploaded(RoadWaiting& waiting) {
    while (isInportIR.load(std::memory_order_acquire) == 1) {
        if (!waiting.waitForUpload())
            return false;
    }
    return true;
}

bool isConfirmed(Arming arming) {
    return arming == Arming::beforeRequest ? confirmedSinceLastFrame == 1
                                           : CheckMCUInportIR_Finish != 1;
}

RoadEnd waitUntilConfirmed(const RoadOptions& options, RoadWaiting& waiting) {
    for (std::uint32_t poll = 0; !isConfirmed(options.arming); ++poll) {
        if (poll == options.confirmationPolls)
            return RoadEnd::notConfirmed;
        if (!waiting.waitForConfirmation(poll))
            return RoadEnd::givenUp;
    }
    return RoadEnd::confirmed;
}

RoadEnd upload(const RoadOptions& options, RoadWaiting& waiting) {
    if (options.arming == Arming::beforeRequest)
        CheckMCUInportIR_Finish = 1;
    isInportIR.store(1, std::memory_order_release);
    if (!waitUntilUploaded(waiting))
        return RoadEnd::givenUp;
    if (options.arming == Arming::afterUpload)
        CheckMCUInportIR_Finish = 1;
    return waitUntilConfirmed(options, waiting);
}

enum class Name { ofFile, ofSlot };

RoadResult walk(std::uint32_t slot, const std::string& path, Name name, const RoadOptions& options,
                RoadWaiting& waiting) {
    const std::int64_t index = std::int64_t{slot} - 1;
    IR_InportNumber = slot;
    QNIRFile file;
    if (!file.OpenFilePath(path))
        return {RoadEnd::fileRefused, file.whyRefused()};
    if (!file.setIrdataBuff())
        return {RoadEnd::samplesRefused, file.whyRefused()};
    if (name == Name::ofFile)
        file.copyIRName(index);
    else
        QNIRFile::nullIRName(index);
    const RoadEnd end = upload(options, waiting);
    // Without a confirmation the slot is recorded all the same, on purpose.
    if (end == RoadEnd::givenUp)
        return {end, {}};
    file.sendIsInternalIR(index);
    if (options.recorded)
        options.recorded(file);
    return {end, {}};
}

} // namespace

RoadResult loadSlot(std::uint32_t slot, const std::string& path, const RoadOptions& options,
                    RoadWaiting& waiting) {
    return walk(slot, path, Name::ofFile, options, waiting);
}

std::string blankIRPath(const std::string& bundlePath) {
    return bundlePath + "/Contents/Resources/0.wav";
}

RoadResult clearSlot(std::uint32_t slot, const std::string& bundlePath, const RoadOptions& options,
                     RoadWaiting& waiting) {
    return walk(slot, blankIRPath(bundlePath), Name::ofSlot, options, waiting);
}

} // namespace cabslot
