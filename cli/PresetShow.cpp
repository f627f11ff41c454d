#include "cli/PresetShow.h"

#include "cli/Console.h"
#include "cli/Document.h"
#include "preset/PresetCheck.h"

#include <algorithm>
#include <iostream>
#include <span>

namespace cabslot {

namespace {

bool hasFields(const PresetFinding& found) {
    return found.error != presetUnreadable && found.error != presetWrongLength;
}

std::size_t nonzeroBytes(std::span<const std::uint8_t> bytes) {
    return bytes.size() - static_cast<std::size_t>(std::ranges::count(bytes, 0));
}

std::string bytesText(std::span<const std::uint8_t> bytes) {
    const std::size_t nonzero = nonzeroBytes(bytes);
    return std::to_string(bytes.size()) + " bytes, " +
           (nonzero == 0 ? "all 0" : std::to_string(nonzero) + " of them not 0");
}

void printJson(const PresetFinding& found) {
    const PresetBuffUnion& image = found.image;
    const auto shown = [&](std::size_t value) { return hasFields(found) ? Json(value) : Json(); };
    const Json json = {{"file_size", shown(image.buff_S.FileSize)},
                       {"device_id", shown(image.buff_S.DeviceID)},
                       {"preset_version", shown(image.buff_S.PresetVersion)},
                       {"reserve_nonzero_bytes", shown(nonzeroBytes(image.buff_S.Reserve))},
                       {"checksum_stored", shown(image.buff_S.CheckSum)},
                       {"checksum_computed", shown(image.dataSum())},
                       {"data_nonzero_bytes", shown(nonzeroBytes(image.buff_S.DataStart))},
                       {"error", static_cast<std::int32_t>(found.error)},
                       {"verdict", presetVerdict(found)}};
    printDocument(json);
}

void printText(const PresetFinding& found) {
    const PresetBuffUnion& image = found.image;
    const std::string unusual =
        image.buff_S.FileSize == presetSize
            ? ""
            : " (should be " + std::to_string(presetSize) + ", but is not checked)";
    const std::string code = "error " + std::to_string(found.error) + ": ";
    std::cout << "size      " << image.buff_S.FileSize << unusual << '\n'
              << "device    " << image.buff_S.DeviceID << '\n'
              << "version   " << image.buff_S.PresetVersion << '\n'
              << "reserve   " << bytesText(image.buff_S.Reserve) << '\n'
              << "checksum  " << image.buff_S.CheckSum << " stored, " << image.dataSum()
              << " computed\n"
              << "data      " << bytesText(image.buff_S.DataStart) << '\n'
              << "verdict   " << (found.error == presetGood ? "" : code) << presetVerdict(found)
              << '\n';
}

} // namespace

PresetShow::PresetShow(Arguments& program)
    : Command(program, "show", "Show the fields of a preset and whether it is valid") {
    addFile("FILE", file_, "A preset file");
    addJson(json_);
}

ExitStatus PresetShow::run() {
    const PresetFinding found = examinePreset(file_);
    if (json_)
        printJson(found);
    else if (hasFields(found))
        printText(found);
    else
        complain(file_ + ": " + presetVerdict(found));
    return found.error == presetGood ? ExitStatus::done : ExitStatus::fileRefused;
}

} // namespace cabslot
