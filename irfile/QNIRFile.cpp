#include "irfile/QNIRFile.h"

#include "base/Files.h"
#include "device/SharedState.h"
#include "irfile/FactoryNames.h"
#include "irfile/NameFromPath.h"

#include <algorithm>
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

constexpr std::size_t wavNameSize = 10; // characters of a file name that are sent
constexpr std::int8_t blank = 0x20;

/// A file's bytes as text, for searching and comparing.
std::string_view asText(std::span<const std::uint8_t> file) {
    return {reinterpret_cast<const char*>(file.data()), file.size()};
}

/// The first `tag` in `file`, or null. As in the pedal's own tool, this searches the bytes, not the
/// list of chunks, so a tag inside an earlier chunk counts. A tag that ends with the file's last
/// byte does not count.
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

QNIRFile::QNIRFile() {
    CharFileNane.fill(blank);
}

bool QNIRFile::OpenFilePath(const std::string& path) {
    staging_ = true;
    return open(path, Extent::asNeeded);
}

bool QNIRFile::openForInspection(const std::string& path, Extent extent) {
    staging_ = false;
    return open(path, extent);
}

bool QNIRFile::open(const std::string& path, Extent extent) {
    for (const std::uint32_t most : {usualPart, mostFileBytes}) {
        releaseFile();
        FileBytes file = readFile(path, most);
        if (!file.bytes)
            return refuse(std::move(file.whyNot));
        if (file.fileSize > mostFileBytes)
            return refuse("it is too large: files of 4 GiB and more are not read");
        readBytes_ = std::move(file.bytes);
        heldWhole_ = file.whole();
        sizeOnDisk_ = file.fileSize;
        const bool accepted = examine({readBytes_.get(), file.size}, path);
        if (heldWhole_ || (accepted && holdsItsPoints()))
            return accepted;
        if (extent == Extent::start)
            return refuse("it is long, and its samples are not within its first megabyte");
    }
    return false; // not reached: the second pass reads the whole file
}

bool QNIRFile::openBytes(std::span<const std::uint8_t> bytes, const std::string& path) {
    staging_ = true;
    releaseFile();
    heldWhole_ = true;
    sizeOnDisk_ = bytes.size();
    return examine(bytes, path);
}

bool QNIRFile::examine(std::span<const std::uint8_t> file, const std::string& path) {
    pFileBuff = file.data();
    FileSize = static_cast<std::uint32_t>(file.size());
    if (FileSize == 0)
        return refuse("it is empty");
    if (FileSize < layout::riffHeaderSize)
        return refuse("it is not a WAV file: it holds only " + std::to_string(FileSize) + " bytes");
    IsFileOpenSuccess =
        asText(file).starts_with(layout::factoryMark) ? openFactoryFile() : openWavFile(path);
    return IsFileOpenSuccess;
}

/// Whether everything that GetIRDataBuffer() may need is in memory.
bool QNIRFile::holdsItsPoints() const {
    const WAVE_FORMAT wav = format();
    const std::size_t sampleSize = wav.bitsPerSample / 8u;
    const std::size_t frameSize = sampleSize * wav.channelCount;
    return samples().size() >= irWorkCount * std::max(frameSize, layout::factorySampleSize);
}

void QNIRFile::releaseFile() {
    IsFileOpenSuccess = false;
    readBytes_.reset();
    pFileBuff = nullptr;
    pIRData = nullptr;
    riffheader = {};
    fmt_block = {};
    data_block = {};
    whyRefused_.clear();
}

bool QNIRFile::refuse(std::string why) {
    releaseFile();
    whyRefused_ = std::move(why);
    return false;
}

/// Refuses with `why`, unless the file is not a WAV file at all, which is then the better reason.
bool QNIRFile::refuseWav(std::string why) {
    std::string noWav = whyNoWav(riffheader);
    return refuse(noWav.empty() ? std::move(why) : std::move(noWav));
}

bool QNIRFile::openFactoryFile() {
    const std::uint8_t index = pFileBuff[layout::factoryNameIndex];
    if (index >= factoryNameCount)
        return refuse("it is a factory IR file with the unknown number " + std::to_string(index) +
                      "; 0 to " + std::to_string(factoryNameCount - 1) + " are known");
    std::copy_n(FileNameBuff[index].begin(), factoryNameSize, CharFileNane.begin());
    CharFileNane[factoryNameSize] = 0;
    pIRData = pFileBuff + std::min<std::size_t>(layout::factorySamples, FileSize);
    _isInteralIR = true;
    if (staging_)
        SendisInternalIR = 1;
    return true;
}

bool QNIRFile::openWavFile(const std::string& path) {
    _isInteralIR = false;
    if (staging_)
        SendisInternalIR = 0;
    riffheader = RIFF_HEADER(pFileBuff);
    if (!findChunks())
        return false;
    const std::string_view name = irNameFromPath(path);
    if (std::string why = whyNameRefused(name); !why.empty())
        return refuse(std::move(why));
    setWavName(name);
    return countFrames();
}

bool QNIRFile::findChunks() {
    const std::span<const std::uint8_t> file(pFileBuff, FileSize);
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

    fmt_block = FMT_BLOCK(fmt);
    data_block = DATA_BLOCK(data);
    pIRData = data_block.samples();
    std::string why = whyNoWav(riffheader);
    return why.empty() || refuse(std::move(why));
}

void QNIRFile::setWavName(std::string_view name) {
    // A shorter name leaves the end of the previous one in place, which does not matter: each load
    // uses a new object, in which these bytes are blanks.
    std::copy_n(name.begin(), std::min(name.size(), wavNameSize), CharFileNane.begin());
    CharFileNane[wavNameSize] = 0;
}

bool QNIRFile::countFrames() {
    const WAVE_FORMAT format = fmt_block.format();
    if (format.channelCount == 0)
        return refuse("0 channels are not supported; 1 (mono) and 2 (stereo, the left one) are");
    const std::uint32_t sampleSize = format.bitsPerSample / 8u;
    if (sampleSize == 0)
        return refuse(whyBitsRefused(format.bitsPerSample));
    PointSize = data_block.size() / (sampleSize * format.channelCount);
    return true;
}

} // namespace cabslot
