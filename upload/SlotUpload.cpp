#include "upload/SlotUpload.h"

#include "device/SharedState.h"
#include "irfile/QNIRFile.h"

namespace cabslot {

namespace {

// True when the device thread has built the last frame; false when the upload was given up.
bool waitUntilUploaded(UploadWait& waiting) {
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

UploadEnd waitUntilConfirmed(const UploadOptions& options, UploadWait& waiting) {
    for (std::uint32_t poll = 0; !isConfirmed(options.arming); ++poll) {
        if (poll == options.confirmationPolls)
            return UploadEnd::notConfirmed;
        if (!waiting.waitForConfirmation(poll))
            return UploadEnd::givenUp;
    }
    return UploadEnd::confirmed;
}

UploadEnd upload(const UploadOptions& options, UploadWait& waiting) {
    if (options.arming == Arming::beforeRequest)
        CheckMCUInportIR_Finish = 1;
    isInportIR.store(1, std::memory_order_release);
    if (!waitUntilUploaded(waiting))
        return UploadEnd::givenUp;
    if (options.arming == Arming::afterUpload)
        CheckMCUInportIR_Finish = 1;
    return waitUntilConfirmed(options, waiting);
}

enum class Name { ofFile, ofSlot };

UploadResult uploadSlot(std::uint32_t slot, const std::string& path, Name name,
                        const UploadOptions& options, UploadWait& waiting) {
    const std::int64_t index = std::int64_t{slot} - 1;
    IR_InportNumber = slot;
    QNIRFile file;
    if (!file.OpenFilePath(path))
        return {UploadEnd::fileRefused, file.whyRefused()};
    if (!file.setIrdataBuff())
        return {UploadEnd::samplesRefused, file.whyRefused()};
    if (name == Name::ofFile)
        file.copyIRName(index);
    else
        QNIRFile::nullIRName(index);
    const UploadEnd end = upload(options, waiting);
    // Without a confirmation the slot is recorded all the same, on purpose.
    if (end == UploadEnd::givenUp)
        return {end, {}};
    file.sendIsInternalIR(index);
    if (options.recorded)
        options.recorded(file);
    return {end, {}};
}

} // namespace

UploadResult loadSlot(std::uint32_t slot, const std::string& path, const UploadOptions& options,
                      UploadWait& waiting) {
    return uploadSlot(slot, path, Name::ofFile, options, waiting);
}

std::string blankIRPath(const std::string& bundlePath) {
    return bundlePath + "/Contents/Resources/0.wav";
}

UploadResult clearSlot(std::uint32_t slot, const std::string& bundlePath,
                       const UploadOptions& options, UploadWait& waiting) {
    return uploadSlot(slot, blankIRPath(bundlePath), Name::ofSlot, options, waiting);
}

} // namespace cabslot
