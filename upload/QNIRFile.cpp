#include "upload/QNIRFile.h"

#include "device/SharedState.h"
#include "irfile/NameField.h"
#include "irfile/WavConversion.h"
#include "upload/Staging.h"

#include <algorithm>

namespace cabslot {

namespace {

constexpr std::int8_t blank = 0x20;

} // namespace

QNIRFile::QNIRFile() {
    CharFileNane.fill(blank);
}

bool QNIRFile::OpenFilePath(const std::string& path) {
    file_ = IRFile::read(path);
    whyRefused_ = file_.whyRefused();
    IsFileOpenSuccess = file_.isOpen();
    pFileBuff = file_.bytes().data();
    FileSize = static_cast<std::uint32_t>(file_.bytes().size());
    pIRData = file_.samples().data();
    riffheader = file_.riffHeader();
    fmt_block = file_.formatBlock();
    data_block = file_.dataBlock();
    if (file_.kind() != IRFile::Kind::unknown) {
        _isInteralIR = file_.isFactory();
        SendisInternalIR = _isInteralIR ? 1 : 0;
    }
    if (IsFileOpenSuccess && !_isInteralIR)
        PointSize = file_.frameCount();
    if (IsFileOpenSuccess)
        takeName();
    return IsFileOpenSuccess;
}

void QNIRFile::takeName() {
    // A shorter name leaves the end of the previous one in place, which does not matter: each load
    // uses a new object, in which these bytes are blanks.
    std::ranges::copy(file_.name(), CharFileNane.begin());
    CharFileNane[_isInteralIR ? sentNameSize : wavNameSize] = 0;
}

bool QNIRFile::GetIRDataBuffer(std::span<std::uint32_t, irPointCount> destination) {
    whyRefused_.clear();
    if (!IsFileOpenSuccess) {
        whyRefused_ = "no file is loaded";
        return false;
    }
    const SampleBytes samples = file_.samples();
    if (_isInteralIR)
        decodeFactory(samples, destination);
    else
        whyRefused_ = convertWav(fmt_block.present() ? fmt_block.format() : WAVE_FORMAT{},
                                 PointSize, samples, IRPointBuffer, destination);
    return whyRefused_.empty();
}

bool QNIRFile::setIrdataBuff() {
    return GetIRDataBuffer(irdatabuff);
}

void QNIRFile::copyIRName(std::int64_t slot) const {
    NameField field;
    field.fill(static_cast<std::uint8_t>(blank));
    for (std::size_t i = 0; i < field.size(); ++i) {
        field[i] = static_cast<std::uint8_t>(CharFileNane[i]);
        if (field[i] == 0)
            break;
    }
    stageName(slot, field);
}

void QNIRFile::nullIRName(std::int64_t slot) {
    const std::string name = defaultSlotName(static_cast<std::size_t>(slot) + 1);
    NameField field;
    field.fill(static_cast<std::uint8_t>(blank));
    std::ranges::copy(name, field.begin());
    stageName(slot, field);
}

void QNIRFile::sendIsInternalIR(std::int64_t slot) const {
    recordFactoryFlag(slot, _isInteralIR);
}

} // namespace cabslot
