#include "upload/SlotUpload.h"

#include "device/SharedState.h"
#include "upload/QNIRFile.h"
#include "upload/Staging.h"

#include <algorithm>

namespace cabslot {

namespace {

// False if the upload was abandoned.
bool waitUntilUploaded(UploadWait& wait) {
    while (isInportIR.load(std::memory_order_acquire) == 1) {
        if (!wait.waitForUpload())
            return false;
    }
    return true;
}

UploadEnd waitUntilConfirmed(std::uint32_t polls, UploadWait& wait) {
    for (std::uint32_t poll = 0; CheckMCUInportIR_Finish == 1; ++poll) {
        if (poll == polls || wait.isEnough())
            return UploadEnd::notConfirmed;
        if (!wait.waitForConfirmation(poll))
            return UploadEnd::givenUp;
    }
    return UploadEnd::confirmed;
}

UploadEnd upload(const UploadOptions& options, UploadWait& wait) {
    armWithLastFrame = options.arming == Arming::withLastFrame ? 1 : 0;
    isInportIR.store(1, std::memory_order_release);
    if (!waitUntilUploaded(wait))
        return UploadEnd::givenUp;
    if (options.arming == Arming::afterUpload)
        CheckMCUInportIR_Finish = 1;
    return waitUntilConfirmed(options.confirmationPolls, wait);
}

enum class Name { ofFile, ofSlot };

UploadResult uploadFile(std::uint32_t slot, const std::string& path, Name name,
                        const UploadOptions& options, UploadWait& wait) {
    const std::int64_t index = std::int64_t{slot} - 1;
    // After an abandoned upload the device thread still reads what is staged.
    if (!waitUntilUploaded(wait))
        return {UploadEnd::givenUp, {}};
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
    const UploadEnd end = upload(options, wait);
    if (end == UploadEnd::givenUp)
        return {end, {}};
    // Even without a confirmation: the pedal may have stored the IR anyway.
    file.sendIsInternalIR(index);
    if (options.recorded)
        options.recorded(&file.file());
    return {end, {}};
}

} // namespace

UploadResult loadSlot(std::uint32_t slot, const std::string& path, const UploadOptions& options,
                      UploadWait& wait) {
    return uploadFile(slot, path, Name::ofFile, options, wait);
}

UploadResult loadSlot(std::uint32_t slot, const IR& ir, const UploadOptions& options,
                      UploadWait& wait) {
    const std::int64_t index = std::int64_t{slot} - 1;
    if (!waitUntilUploaded(wait))
        return {UploadEnd::givenUp, {}};
    IR_InportNumber = slot;
    stage(index, ir);
    const UploadEnd end = upload(options, wait);
    if (end == UploadEnd::givenUp)
        return {end, {}};
    recordFactoryFlag(index, ir.factory);
    if (options.recorded)
        options.recorded(nullptr);
    return {end, {}};
}

IR stagedIR(const std::string& source) {
    IR ir{.block = irdatabuff, .factory = SendisInternalIR == 1, .source = source};
    std::copy_n(SendFileName.begin(), ir.name.size(), ir.name.begin());
    return ir;
}

std::string blankIRPath(const std::string& bundlePath) {
    return bundlePath + "/Contents/Resources/0.wav";
}

UploadResult clearSlot(std::uint32_t slot, const std::string& bundlePath,
                       const UploadOptions& options, UploadWait& wait) {
    return uploadFile(slot, blankIRPath(bundlePath), Name::ofSlot, options, wait);
}

} // namespace cabslot
