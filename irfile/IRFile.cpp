#include "irfile/IRFile.h"

#include "base/Files.h"
#include "irfile/FactoryNames.h"
#include "irfile/IRConversion.h"
#include "irfile/NameField.h"
#include "irfile/NameFromPath.h"
#include "irfile/WavConversion.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace cabslot {

namespace {

constexpr std::string_view riffTag = "RIFF";
constexpr std::string_view waveType = "WAVE";
constexpr std::string_view fmtTag = "fmt ";
constexpr std::string_view dataTag = "data";

// Only the start of a long recording is used, and in nearly every file it lies within this many
// bytes. Where it does not, the whole file is read.
constexpr std::uint32_t usualPart = 1 << 20;

/// A file's bytes as text, for searching and comparing.
std::string_view asText(std::span<const std::uint8_t> file) {
    return {reinterpret_cast<const char*>(file.data()), file.size()};
}

/// The first `tag` in `file`, or null. This searches the bytes, not the list of chunks, so a tag
/// inside an earlier chunk counts: kept, so that a file sounds the same in every version. A tag
/// that ends with the file's last byte does not count.
const std::uint8_t* findTag(std::span<const std::uint8_t> file, std::string_view tag) {
    const std::size_t position = asText(file.first(file.size() - 1)).find(tag);
    return position == std::string_view::npos ? nullptr : &file[position];
}

/// Whether `file` holds `size` bytes from `start` on.
bool holds(std::span<const std::uint8_t> file, const std::uint8_t* start, std::size_t size) {
    return static_cast<std::size_t>(start - file.data()) + size <= file.size();
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

IRFile IRFile::read(const std::string& path, Extent extent) {
    for (const std::uint32_t most : {usualPart, mostFileBytes}) {
        IRFile result;
        FileBytes file = readFile(path, most);
        if (!file.bytes)
            result.refuse(std::move(file.whyNot));
        else if (file.fileSize > mostFileBytes)
            result.refuse("it is too large: files of 4 GiB and more are not read");
        if (!result.whyRefused_.empty())
            return result;
        const bool whole = file.whole();
        result.hold(std::move(file.bytes), file.size, file.fileSize);
        result.examine(path);
        if (whole || (result.isOpen_ && result.holdsItsPoints()))
            return result;
        if (extent == Extent::start) {
            result.refuse("it is long, and its samples are not within its first megabyte");
            return result;
        }
    }
    return {}; // not reached: the second pass reads the whole file
}

IRFile IRFile::of(std::span<const std::uint8_t> bytes, const std::string& path) {
    IRFile result;
    auto copy = std::make_unique<std::uint8_t[]>(bytes.size());
    std::ranges::copy(bytes, copy.get());
    result.hold(std::move(copy), bytes.size(), bytes.size());
    result.examine(path);
    return result;
}

void IRFile::hold(std::unique_ptr<std::uint8_t[]> bytes, std::size_t size,
                  std::uint64_t sizeOnDisk) {
    bytes_ = std::move(bytes);
    size_ = size;
    sizeOnDisk_ = sizeOnDisk;
}

void IRFile::examine(const std::string& path) {
    if (size_ == 0)
        refuse("it is empty");
    else if (size_ < layout::riffHeaderSize)
        refuse("it is not a WAV file: it holds only " + std::to_string(size_) + " bytes");
    else
        isOpen_ = asText(bytes()).starts_with(layout::factoryMark) ? openFactoryFile()
                                                                   : openWavFile(path);
}

/// Whether everything that convertTo() may need is in memory.
bool IRFile::holdsItsPoints() const {
    const WAVE_FORMAT wav = format();
    const std::size_t sampleSize = wav.bitsPerSample / 8u;
    const std::size_t frameSize = sampleSize * wav.channelCount;
    return samples().size() >= irWorkCount * std::max(frameSize, layout::factorySampleSize);
}

/// Forgets everything but `why` and the kind.
bool IRFile::refuse(std::string why) {
    const Kind kind = kind_;
    *this = IRFile();
    kind_ = kind;
    whyRefused_ = std::move(why);
    return false;
}

/// Refuses with `why`, unless the file is not a WAV file at all, which is then the better reason.
bool IRFile::refuseWav(std::string why) {
    std::string noWav = whyNoWav(riff_);
    return refuse(noWav.empty() ? std::move(why) : std::move(noWav));
}

bool IRFile::openFactoryFile() {
    const std::uint8_t index = bytes()[layout::factoryNameIndex];
    if (index >= factoryNameCount)
        return refuse("it is a factory IR file with the unknown number " + std::to_string(index) +
                      "; 0 to " + std::to_string(factoryNameCount - 1) + " are known");
    name_ = FileNameBuff[index];
    samplesAt_ = std::min<std::size_t>(layout::factorySamples, size_);
    kind_ = Kind::factory;
    return true;
}

bool IRFile::openWavFile(const std::string& path) {
    kind_ = Kind::wav;
    riff_ = RIFF_HEADER(bytes_.get());
    if (!findChunks())
        return false;
    const std::string_view name = irNameFromPath(path);
    if (std::string why = whyNameRefused(name); !why.empty())
        return refuse(std::move(why));
    name_ = name.substr(0, wavNameSize);
    return checkFormat();
}

bool IRFile::findChunks() {
    const std::span<const std::uint8_t> file = bytes();
    const std::uint8_t* const fmt = findTag(file, fmtTag);
    if (!fmt)
        return refuseWav("it is a damaged WAV file: it has no \"fmt \" chunk");
    if (!holds(file, fmt, layout::fmtBlockSize))
        return refuseWav("it is a damaged WAV file: it ends within its \"fmt \" chunk");
    const std::uint8_t* const data = findTag(file, dataTag);
    if (!data)
        return refuseWav("it is a damaged WAV file: it has no \"data\" chunk");
    if (!holds(file, data, layout::dataSamples))
        return refuseWav("it is a damaged WAV file: it ends within its \"data\" chunk");

    fmt_ = FMT_BLOCK(fmt);
    data_ = DATA_BLOCK(data);
    samplesAt_ = static_cast<std::size_t>(data_.samples() - file.data());
    std::string why = whyNoWav(riff_);
    return why.empty() || refuse(std::move(why));
}

bool IRFile::checkFormat() {
    const WAVE_FORMAT format = fmt_.format();
    if (format.channelCount == 0)
        return refuse("0 channels are not supported; 1 (mono) and 2 (stereo, the left one) are");
    if (format.bitsPerSample / 8u == 0)
        return refuse(whyBitsRefused(format.bitsPerSample));
    return true;
}

ReadIR readIR(const std::string& path, Extent extent) {
    return readIR(IRFile::read(path, extent), path);
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
