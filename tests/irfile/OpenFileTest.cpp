// How unusual files are read, and its messages for refused ones. The fuzz seeds check
// that it refuses only bad files.
#include "irfile/IRFile.h"
#include "tests/support/Limits.h"
#include "tests/support/WavBuilder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace cabslot::testing {
namespace {

class OpenFile : public ::testing::Test {
protected:
    static void expectRefused(const std::string& path, const std::string& why) {
        const ReadIR read = readIR(path);
        EXPECT_EQ(read.whyRefused, why) << path;
        EXPECT_TRUE(read.file.bytes().empty() && read.ir.source.empty()) << path;
    }

    /// Reads a file with these bytes and converts it.
    void read(const std::string& name, const std::string& bytes) {
        const ReadIR read = readIR(folder_.write(name, bytes));
        ASSERT_EQ(read.whyRefused, "");
        file_ = read.file;
        block_ = read.ir.block;
    }

    TempFolder folder_;
    IRFile file_;
    Block block_{};
};

TEST_F(OpenFile, BadContents) {
    const std::string wav = WavBuilder{}.bytes(); // 12 header, 24 "fmt ", 8 "data"
    const std::string bits = " bits per sample are not supported; 8, 16, 24 and 32 (float) are";
    const std::tuple<const char*, std::string, std::string> rows[] = {
        {"short", "RIFF1234WAV", "it is not a WAV file: it holds only 11 bytes"},
        {"big-endian", WavBuilder{.riff = "RIFX"}.bytes(),
         "it is not a WAV file: it does not begin with \"RIFF\""},
        {"fmt in the last four bytes", wav.substr(0, 12) + wav.substr(36) + "fmt ",
         "it is a damaged WAV file: it has no \"fmt \" chunk"},
        {"fmt one byte short", wav.substr(0, 12) + wav.substr(36) + wav.substr(12, 23),
         "it is a damaged WAV file: it ends within its \"fmt \" chunk"},
        {"no channels", WavBuilder{.channels = 0}.bytes(),
         "0 channels are not supported; 1 (mono) and 2 (stereo, the left one) are"},
        {"four bits", WavBuilder{.bits = 4}.bytes(), "4" + bits},
        {"factory 30", factoryFile(30, {}),
         "it is a factory IR file with the unknown number 30; 0 to 29 are known"},
    };
    for (const auto& [name, bytes, why] : rows)
        expectRefused(folder_.write(name, bytes), why);
}

TEST_F(OpenFile, NothingToRead) {
    const std::string fifo = folder_.path("fifo.wav");
    const std::string loop = folder_.path("loop.wav");
    const std::string large = folder_.write("large.wav", WavBuilder{}.bytes());
    const std::string secret = folder_.write("secret.wav", WavBuilder{}.bytes());
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_EQ(::symlink(loop.c_str(), loop.c_str()), 0);
    ASSERT_EQ(::chmod(secret.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder_.path("").c_str(), 0755), 0);
    std::filesystem::resize_file(large, std::uintmax_t{1} << 32); // sparse

    expectRefused("", "no file was chosen");
    expectRefused(folder_.path("missing.wav"), "there is no such file");
    expectRefused(large + std::string("\0/a.wav", 7),
                  "there is no such file: its path holds a zero byte");
    expectRefused(large + "/a.wav", "there is no such file: a part of its path is not a folder");
    expectRefused("/", "it is a folder; choose a file in it");
    expectRefused(fifo, "it is not a file but a pipe");
    expectRefused("/dev/zero", "it is not a file but a device");
    expectRefused(loop, "it is a symbolic link that leads back to itself");
    expectRefused(large, "it is too large: files of 4 GiB and more are not read");
    // The kernel reports 4096 bytes and returns fewer.
    expectRefused("/sys/devices/system/cpu/online",
                  "it changed while it was being read; try again");
    const NotRoot somebody;
    expectRefused(secret, "you have no permission to read it");
}

TEST_F(OpenFile, NamesThatThePedalCannotShow) {
    const std::string unnamed = "a character that";
    const std::pair<std::string, std::string> rows[] = {
        {"Only ASCII at first \xE2\x82\xAC.wav", "\"\xE2\x82\xAC\", which"},
        {"\xF0\x9F\x8E\xB8.wav", "\"\xF0\x9F\x8E\xB8\", which"},
        {"Cafe\xCC\x81.wav", "\"e\xCC\x81\", which"}, // a combining accent
        {"backwards\xE2\x80\xAE.wav", unnamed},
        {"latin1 \xE9.wav", unnamed},
    };
    for (const auto& [name, told] : rows)
        expectRefused(folder_.write(name, WavBuilder{}.bytes()),
                      "its name holds " + told +
                          " the pedal cannot show; use plain letters, digits and signs"
                          " (rename it, for example without accents)");
}

// The tags are searched for byte by byte, even inside other chunks.
TEST_F(OpenFile, TheFirstTagInTheFileCounts) {
    const std::string format = WavBuilder{.rate = 96000, .bits = 24}.bytes().substr(12, 24);
    const std::string data("data\x04\0\0\0", 8);
    WavBuilder wav{.beforeFormat =
                       chunk("LIST", "my" + data + "\x11\x22\x33\x44" + "says" + format)};
    read("a.wav", wav.add(1).bytes());
    EXPECT_EQ(file_.sampleRate(), 96000u);
    EXPECT_EQ(file_.bitsPerSample(), 24u);
    EXPECT_EQ(file_.frameCount(), 1u); // four bytes, three per frame

    wav.beforeFormat = chunk("LIST", "my" + data + "\x11\x22\x33\x44");
    read("b.wav", wav.bytes());
    EXPECT_EQ(file_.frameCount(), 2u);
    EXPECT_EQ(block_[0], 0x221100u) << "the decoy's samples";
}

TEST_F(OpenFile, ExtraChunksAndFieldsThatAreNotReadDoNotMatter) {
    for (const std::size_t tail : {0U, 2U, 24U}) { // "fmt " of 16, 18 and 40 bytes
        WavBuilder wav{.rate = 88200, .channels = 2, .bits = 24, .formatTag = 0xFFFE};
        wav.formatTail.assign(tail, '\x16');
        wav.liesAboutBytes = true;
        wav.beforeFormat = chunk("JUNK", std::string(28, 'x'));
        wav.beforeData = chunk("fact", "1234");
        wav.afterData = chunk("LIST", "data fmt ");
        for (int i = 0; i < 7; ++i)
            wav.add(0x111111 * (i + 1));
        read("a.wav", wav.bytes());
        EXPECT_EQ(file_.sampleRate(), 88200u);
        EXPECT_EQ(file_.channelCount(), 2u);
        EXPECT_EQ(file_.bitsPerSample(), 24u);
        EXPECT_EQ(file_.frameCount(), 3u); // 21 bytes, six per frame; the rest is dropped
        EXPECT_EQ(file_.heldFrames(), 3u);
        std::vector<float> left(9);
        EXPECT_EQ(file_.readChannel(0, 0, left), 3u);
        EXPECT_EQ(block_[1], 0x555555u) << "frame 2, left";
    }
}

TEST_F(OpenFile, OfALongFileAsMuchIsReadAsIsNeeded) {
    constexpr std::size_t part = 1 << 20;
    WavBuilder wav;
    for (int i = 0; i < 600'000; ++i)
        wav.add(i);
    // Bytes before "fmt ": few; so many that it, or some samples, are outside the first part; and
    // all.
    for (const std::size_t before :
         std::array<std::size_t, 4>{0, part - 600, part - 22, 2 * part}) {
        wav.beforeFormat = chunk("LIST", std::string(before, 'x'));
        const std::string bytes = wav.bytes();
        read("Long.wav", bytes);
        EXPECT_LE(file_.bytes().size(), 2 * part + 24);
        EXPECT_EQ(file_.heldFrames(), 600'000u);
        EXPECT_EQ(file_.frameCount(), 600'000u);
        for (std::uint32_t i = 0; i < irPointCount; ++i)
            ASSERT_EQ(block_[i], i << 8);
    }
}

} // namespace
} // namespace cabslot::testing
