#include "preset/QNPresetFile.h"

#include "base/Files.h"

#include <algorithm>

namespace cabslot {

bool QNPresetFile::ReadFileToPresetPath(const std::string& path, std::int32_t* Errormsg) {
    const PresetFinding found = examinePreset(path);
    *Errormsg = found.error;
    whyNotRead_ = found.error == presetGood ? std::string() : presetVerdict(found);
    if (found.error != presetGood)
        return false;
    ChangeData(found.image, NewPreset);
    return true;
}

bool QNPresetFile::SavePresetToFilePath(const std::string& path, std::int32_t* Errormsg) {
    NewPreset.stamp();
    whyNotSaved_ = replaceFile(path, NewPreset.Buff_A);
    if (whyNotSaved_.empty())
        return true;
    *Errormsg = presetNotSaved;
    return false;
}

bool QNPresetFile::ReadPresetBufferPresetData(std::uint8_t* destination, std::uint32_t Len) const {
    if (Len > presetDataSize)
        return false;
    std::copy_n(NewPreset.buff_S.DataStart.begin(), Len, destination);
    return true;
}

bool QNPresetFile::WritePresetBufferPresetData(const std::uint8_t* source, std::uint32_t Len) {
    if (Len > presetDataSize)
        return false;
    std::copy_n(source, Len, NewPreset.buff_S.DataStart.begin());
    return true;
}

} // namespace cabslot
