#include "irfile/IRFile.h"

#include "irfile/FactoryNames.h"
#include "irfile/FileWindow.h"
#include "irfile/IRConversion.h"
#include "irfile/NameField.h"
#include "irfile/NameFromPath.h"
#include "irfile/RiffChunks.h"
#include "irfile/WavConversion.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace cabslot {

namespace {

constexpr std::string_view riffTag = "RIFF";
constexpr std::string_view waveType = "WAVE";
constexpr std::string_view fmtTag = "fmt ";
constexpr std::string_view dataTag = "data";

// Where fewer sample bytes than this are within a long file's first megabyte, they are read from
// their own place. No usable format needs more: stereo, 32 bits.
constexpr std::size_t neededSampleBytes = irWorkCount * 2 * sizeof(float);

constexpr std::uint64_t largestFile = std::numeric_limits<std::uint32_t>::max();

std::string_view asText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Why the file cannot be an IR file by its size; empty if it can.
std::string whyNotRead(const FileWindow& file) {
    if (!file.whyNot().empty())
        return file.whyNot();
    if (file.size() > largestFile)
        return "it is too large: files of 4 GiB and more are not read";
    if (file.size() == 0)
        return "it is empty";
    if (file.size() < layout::riffHeaderSize)
        return "it is not a WAV file: it holds only " + std::to_string(file.size()) + " bytes";
    return {};
}

/// Why a file with this header is not a WAV file; empty if it is one.
std::string whyNoWav(const RIFF_HEADER& header) {
    if (header.tag() != riffTag)
        return "it is not a WAV file: it does not begin with \"RIFF\"";
    if (header.formType() != waveType)
        return "it is not a WAV file: it is a RIFF file of another kind than \"WAVE\"";
    return {};
}

} // namespace

IRFile IRFile::read(const std::string& path, const StopCheck& stop, Extent extent,
                    const std::string& namePath) {
    FileWindow file(path, stop);
    return examined(file, namePath.empty() ? path : namePath, extent);
}

IRFile IRFile::of(std::span<const std::uint8_t> bytes, const std::string& path) {
    FileWindow file(bytes);
    return examined(file, path, Extent::asNeeded);
}

IRFile IRFile::examined(FileWindow& file, const std::string& path, Extent extent) {
    IRFile result;
    std::string why = whyNotRead(file);
    if (why.empty()) {
        const std::span<const std::uint8_t> start = file.from(0);
        result.bytes_ = std::make_shared<std::vector<std::uint8_t>>(start.begin(), start.end());
        result.sizeOnDisk_ = file.size();
        if (!start.empty())
            why = asText(start).starts_with(layout::factoryMark)
                      ? result.openFactoryFile()
                      : result.openWavFile(file, path, extent);
    }
    if (!file.whyNot().empty())
        why = file.whyNot();
    if (why.empty()) {
        result.isOpen_ = true;
        return result;
    }
    IRFile refused; // knows nothing else
    refused.kind_ = result.kind_;
    refused.whyRefused_ = std::move(why);
    return refused;
}

std::string IRFile::openFactoryFile() {
    const std::uint8_t index = bytes()[layout::factoryNameIndex];
    if (index >= factoryNameCount)
        return "it is a factory IR file with the unknown number " + std::to_string(index) +
               "; 0 to " + std::to_string(factoryNameCount - 1) + " are known";
    name_ = FileNameBuff[index];
    samplesAt_ = std::min<std::size_t>(layout::factorySamples, bytes().size());
    samplesInFile_ = samplesAt_;
    samplesEnd_ = bytes().size();
    kind_ = Kind::factory;
    return {};
}

std::string IRFile::openWavFile(FileWindow& file, const std::string& path, Extent extent) {
    kind_ = Kind::wav;
    if (std::string why = whyNoWav(riffHeader()); !why.empty())
        return why;
    if (std::string why = findChunks(file, extent); !why.empty())
        return why;
    const std::string_view name = irNameFromPath(path);
    if (std::string why = whyNameRefused(name); !why.empty())
        return why;
    name_ = name.substr(0, wavNameSize);
    return whyFormatRefused();
}

/// The tags are searched for in the bytes, not in the list of chunks, so a tag inside an earlier
/// chunk counts: kept, so that a file sounds the same in every version. A tag that ends with the
/// file's last byte does not count.
std::string IRFile::findChunks(FileWindow& file, Extent extent) {
    const bool all = extent == Extent::asNeeded || file.size() <= FileWindow::width;
    const std::uint64_t end = all ? file.size() - 1 : FileWindow::width;
    constexpr const char* tooLong = "it is long, and its samples are not within its first megabyte";
    const auto fmt = file.find(fmtTag, end);
    if (!fmt)
        return all ? "it is a damaged WAV file: it has no \"fmt \" chunk" : tooLong;
    if (*fmt + layout::fmtBlockSize > file.size())
        return "it is a damaged WAV file: it ends within its \"fmt \" chunk";
    const auto data = file.find(dataTag, end);
    if (!data)
        return all ? "it is a damaged WAV file: it has no \"data\" chunk" : tooLong;
    if (*data + layout::dataSamples > file.size())
        return "it is a damaged WAV file: it ends within its \"data\" chunk";
    if (!all && *data + layout::dataSamples + neededSampleBytes > end)
        return tooLong;
    noteMisplaced(file, fmtTag, *fmt);
    noteMisplaced(file, dataTag, *data);
    take(file, *fmt, *data);
    return {};
}

void IRFile::noteMisplaced(FileWindow& file, std::string_view tag, std::uint64_t position) {
    if (!misplaced_.tag.empty())
        return;
    if (std::string around = chunkAround(file, position); !around.empty())
        misplaced_ = {std::string(tag), std::move(around)};
}

/// Sets the views. What is not in memory yet is appended.
void IRFile::take(FileWindow& file, std::uint64_t fmt, std::uint64_t data) {
    const std::size_t start = bytes_->size();
    const auto append = [this](std::span<const std::uint8_t> part) {
        const std::size_t place = bytes_->size();
        bytes_->insert(bytes_->end(), part.begin(), part.end());
        return place;
    };
    const bool formatIsHeld = fmt + layout::fmtBlockSize <= start;
    const std::size_t fmtAt = formatIsHeld ? fmt : append(file.at(fmt, layout::fmtBlockSize));
    samplesInFile_ = data + layout::dataSamples;
    const bool samplesAreHeld = start == sizeOnDisk_ || samplesInFile_ + neededSampleBytes <= start;
    const std::size_t dataAt = samplesAreHeld ? data : append(file.from(data));
    samplesAt_ = dataAt + layout::dataSamples;
    samplesEnd_ = samplesAreHeld ? start : bytes_->size();
    if (!file.whyNot().empty()) // what was appended is too short for the views
        return;
    fmt_ = FMT_BLOCK(bytes_->data() + fmtAt);
    data_ = DATA_BLOCK(bytes_->data() + dataAt);
}

std::string IRFile::whyFormatRefused() const {
    if (!fmt_.present())
        return {}; // it could not be read
    const WAVE_FORMAT format = fmt_.format();
    if (format.channelCount == 0)
        return "0 channels are not supported; 1 (mono) and 2 (stereo, the left one) are";
    return format.bitsPerSample / 8u == 0 ? whyBitsRefused(format.bitsPerSample) : "";
}

ReadIR readIR(const std::string& path, const StopCheck& stop, Extent extent) {
    return readIR(IRFile::read(path, stop, extent), path);
}

ReadIR readIRAs(const std::string& name, const std::string& path, const StopCheck& stop,
                Extent extent) {
    constexpr const char* neverRefused = "IR.wav"; // unlike the file's own name
    ReadIR result = readIR(IRFile::read(path, stop, extent, neverRefused), path);
    if (result)
        result.ir.name = nameFieldOf(name);
    return result;
}

ReadIR readIR(IRFile file, const std::string& path) {
    ReadIR result{.file = std::move(file), .whyRefused = {}};
    result.whyRefused = result.file.whyRefused();
    if (result.file.isOpen())
        result.whyRefused = result.file.convertTo(result.ir.block);
    if (!result)
        return result;
    result.ir.name = nameFieldOf(result.file.name());
    result.ir.factory = result.file.isFactory();
    result.ir.source = path;
    return result;
}

} // namespace cabslot
