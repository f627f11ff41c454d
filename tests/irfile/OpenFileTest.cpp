// What OpenFilePath takes, what it refuses, and in which words.
#include "device/SharedState.h"
#include "irfile/QNIRFile.h"
#include "tests/support/WavBuilder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace cabslot {
namespace {

using testing::chunk;
using testing::factoryFile;
using testing::NotRoot;
using testing::TempFolder;
using testing::WavBuilder;

class OpenFile : public ::testing::Test {
protected:
    /// Opens a good file first, so that what a refusal lets go can be seen.
    void expectRefused(const std::string& path, const std::string& why) {
        SCOPED_TRACE(path);
        ASSERT_TRUE(file_.OpenFilePath(good_)) << file_.whyRefused();
        ASSERT_EQ(file_.heldBytes(), 46u);
        EXPECT_EQ(file_.whyRefused(), "");

        EXPECT_FALSE(file_.OpenFilePath(path));
        EXPECT_EQ(file_.whyRefused(), why);
        EXPECT_EQ(file_.heldBytes(), 0u);
        EXPECT_EQ(file_.sampleRate(), 0u);
        EXPECT_EQ(file_.frameCount(), 0u);
        EXPECT_EQ(file_.decodedPoints(), 0u);
        EXPECT_FALSE(file_.setIrdataBuff());
        EXPECT_EQ(file_.whyRefused(), "no file is loaded");
    }

    TempFolder folder_;
    std::string good_ = folder_.write("Good.wav", WavBuilder{}.add(1).bytes());
    QNIRFile file_;
};

struct BadFile {
    const char* name;
    std::string bytes;
    std::string why;
};

const std::string noRiff = "it is not a WAV file: it does not begin with \"RIFF\"";
const std::string otherForm =
    "it is not a WAV file: it is a RIFF file of another kind than \"WAVE\"";
const std::string depths = " bits per sample are not supported; 8, 16, 24 and 32 (float) are";

std::string damaged(const std::string& what) {
    return "it is a damaged WAV file: it " + what + " chunk";
}

TEST_F(OpenFile, BadContents) {
    const std::string wav = WavBuilder{}.bytes(); // 12 header, 24 "fmt ", 8 "data"
    const std::string head = wav.substr(0, 12);
    const std::string fmt = wav.substr(12, 24);
    const std::string data = wav.substr(36, 8);
    const BadFile cases[] = {
        {"empty", "", "it is empty"},
        {"short", "RIFF1234WAV", "it is not a WAV file: it holds only 11 bytes"},
        {"text", "Dear diary, today I played.", noRiff},
        {"big-endian", WavBuilder{.riff = "RIFX"}.bytes(), noRiff},
        {"AVI", WavBuilder{.form = "AVI "}.bytes(), otherForm},
        {"AVI without fmt", "RIFF1234AVI 1234567890", otherForm},
        {"no fmt", head + data + "12345678", damaged("has no \"fmt \"")},
        {"fmt in the last four bytes", head + data + "fmt ", damaged("has no \"fmt \"")},
        {"fmt in the last five bytes", head + data + "fmt 1", damaged("ends within its \"fmt \"")},
        {"fmt one byte short", head + data + fmt.substr(0, 23),
         damaged("ends within its \"fmt \"")},
        {"no data", head + fmt, damaged("has no \"data\"")},
        {"data in the last four bytes", head + fmt + "data", damaged("has no \"data\"")},
        {"data one byte short", head + fmt + data.substr(0, 7),
         damaged("ends within its \"data\"")},
        {"no channels", WavBuilder{.channels = 0}.bytes(),
         "0 channels are not supported; 1 (mono) and 2 (stereo, the left one) are"},
        {"four bits", WavBuilder{.bits = 4}.bytes(), "4" + depths},
        {"no bits", WavBuilder{.bits = 0}.bytes(), "0" + depths},
        {"factory 30", factoryFile(30, {}),
         "it is a factory IR file with the unknown number 30; 0 to 29 are known"},
        {"factory 255", factoryFile(255, {}),
         "it is a factory IR file with the unknown number 255; 0 to 29 are known"},
        {"factory mark only", "VadelIR\x01", "it is not a WAV file: it holds only 8 bytes"},
    };
    for (const BadFile& bad : cases)
        expectRefused(folder_.write(bad.name, bad.bytes), bad.why);
}

TEST_F(OpenFile, ChunksJustComplete) {
    const std::string wav = WavBuilder{}.bytes();
    const std::string swapped = wav.substr(0, 12) + wav.substr(36, 8) + wav.substr(12, 24);
    EXPECT_TRUE(file_.OpenFilePath(folder_.write("a.wav", wav))) << file_.whyRefused();
    EXPECT_TRUE(file_.OpenFilePath(folder_.write("b.wav", swapped))) << file_.whyRefused();
}

TEST_F(OpenFile, NothingToRead) {
    const std::string folder = folder_.path("folder.wav");
    const std::string fifo = folder_.path("fifo.wav");
    const std::string loop = folder_.path("loop.wav");
    const std::string large = folder_.write("large.wav", WavBuilder{}.bytes());
    ASSERT_EQ(::mkdir(folder.c_str(), 0700), 0);
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    ASSERT_EQ(::symlink(loop.c_str(), loop.c_str()), 0);
    std::filesystem::resize_file(large, std::uintmax_t{1} << 32); // sparse

    expectRefused("", "no file was chosen");
    expectRefused(folder_.path("missing.wav"), "there is no such file");
    expectRefused(good_ + std::string("\0/a.wav", 7),
                  "there is no such file: its path holds a zero byte");
    expectRefused(good_ + "/a.wav", "there is no such file: a part of its path is not a folder");
    expectRefused(folder, "it is a folder; choose a file in it");
    expectRefused(fifo, "it is not a file but a pipe");
    expectRefused("/dev/null", "it is not a file but a device");
    expectRefused(loop, "it is a symbolic link that leads back to itself");
    expectRefused(folder_.path(std::string(300, 'a')), "its name or path is too long");
    expectRefused(large, "it is too large: files of 4 GiB and more are not read");
}

TEST_F(OpenFile, WithoutPermission) {
    const std::string path = folder_.write("secret.wav", WavBuilder{}.bytes());
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder_.path("").c_str(), 0755), 0);
    const NotRoot somebody;
    expectRefused(path, "you have no permission to read it");
}

TEST_F(OpenFile, AFileThatHoldsLessThanItsSizeSays) {
    // The kernel says 4096 bytes and gives fewer.
    expectRefused("/sys/devices/system/cpu/online",
                  "it changed while it was being read; try again");
}

struct NamedFile {
    std::string path;
    std::string name; ///< the ten bytes that are sent
};

TEST_F(OpenFile, NamesFromPaths) {
    const NamedFile cases[] = {
        {"Cab.wav", "Cab       "},       {"Cabinet_1960.wav", "Cabinet_19"},
        {"Room.WAV", "Room.WAV  "},      {"Room.wav.bak", "Room      "},
        {"a.wav.wav", "a.wav.wav "},     {"a.wavb.wav", "a.wavb.wav"},
        {"a.wavb.wavc", "a.wavb.wav"},   {".wav", "          "},
        {" ~ .wav", " ~        "},       {"Plain", "Plain     "},
        {"x.wav\xC3\xA9", "x         "}, {"\xC3\xA9.wav/in.wav", "in        "},
    };
    std::filesystem::create_directory(folder_.path("\xC3\xA9.wav"));
    for (const NamedFile& one : cases) {
        SCOPED_TRACE(one.path);
        QNIRFile file;
        ASSERT_TRUE(file.OpenFilePath(folder_.write(one.path, WavBuilder{}.bytes())))
            << file.whyRefused();
        const auto field = file.nameField();
        EXPECT_EQ(std::string(field.begin(), field.end()), one.name + std::string("\0    ", 5));
    }
}

TEST_F(OpenFile, NamesThatThePedalCannotShow) {
    const std::string unnamed = "a character that";
    const NamedFile cases[] = {
        {"Caf\xC3\xA9.wav", "\"\xC3\xA9\", which"},
        {"Only ASCII at first \xE2\x82\xAC.wav", "\"\xE2\x82\xAC\", which"},
        {"\xF0\x9F\x8E\xB8.wav", "\"\xF0\x9F\x8E\xB8\", which"},
        {"Cafe\xCC\x81.wav", "\"e\xCC\x81\", which"}, // accent apart from its letter
        {"tab\t.wav", unnamed},
        {"delete\x7F.wav", unnamed},
        {"control\xC2\x9B"
         "31m.wav",
         unnamed},
        {"backwards\xE2\x80\xAE.wav", unnamed},
        {"latin1 \xE9.wav", unnamed},
        {"overlong \xC0\xAF.wav", unnamed},
        {"overlong \xE0\x80\xAF.wav", unnamed},
        {"surrogate \xED\xA0\x80.wav", unnamed},
        {"cut off \xE2\x82.wav", unnamed},
    };
    for (const NamedFile& one : cases)
        expectRefused(folder_.write(one.path, WavBuilder{}.bytes()),
                      "its name holds " + one.name +
                          " the pedal cannot show; use plain letters, digits and signs"
                          " (rename it, for example without accents)");
}

TEST_F(OpenFile, TheFirstTagInTheFileCounts) {
    // A chunk of text that happens to hold the 24 bytes of a "fmt " chunk of its own.
    const std::string decoy = WavBuilder{.rate = 96000, .bits = 24}.bytes().substr(12, 24);
    WavBuilder wav{.beforeFormat = chunk("LIST", "says " + decoy)};
    wav.add(1).add(2).add(3);
    ASSERT_TRUE(file_.OpenFilePath(folder_.write("a.wav", wav.bytes())));
    EXPECT_EQ(file_.sampleRate(), 96000u);
    EXPECT_EQ(file_.frameCount(), 2u); // six bytes of frames of three
}

TEST_F(OpenFile, ExtraChunksAndOddFieldsDoNotMatter) {
    WavBuilder wav{.rate = 88200, .channels = 2, .bits = 24, .formatTag = 0xFFFE};
    wav.beforeFormat = chunk("JUNK", std::string(28, 'x'));
    wav.beforeData = chunk("fact", "1234");
    wav.afterData = chunk("LIST", "data fmt ");
    for (int i = 0; i < 7; ++i)
        wav.add(i);
    ASSERT_TRUE(file_.OpenFilePath(folder_.write("a.wav", wav.bytes())));
    EXPECT_EQ(file_.sampleRate(), 88200u);
    EXPECT_EQ(file_.channelCount(), 2u);
    EXPECT_EQ(file_.bitsPerSample(), 24u);
    EXPECT_EQ(file_.frameCount(), 3u); // 21 bytes of frames of six, the rest is dropped
    EXPECT_EQ(file_.decodedPoints(), 3u);
}

TEST_F(OpenFile, OfALongFileAsMuchIsReadAsIsNeeded) {
    constexpr std::size_t part = 1 << 20;
    WavBuilder wav;
    for (int i = 0; i < 600'000; ++i)
        wav.add(i);
    std::array<std::uint32_t, irPointCount> expected{};
    for (std::uint32_t i = 0; i < irPointCount; ++i)
        expected[i] = i << 8;
    // Bytes before the samples: hardly any, so many that some lie behind the first part, and all.
    for (const std::size_t before : std::array<std::size_t, 3>{0, part - 600, 2 * part}) {
        wav.beforeData = chunk("LIST", std::string(before, 'x'));
        const std::string bytes = wav.bytes();
        ASSERT_TRUE(file_.OpenFilePath(folder_.write("Long.wav", bytes))) << file_.whyRefused();
        EXPECT_EQ(file_.heldBytes(), before == 0 ? part : bytes.size());
        EXPECT_EQ(file_.frameCount(), 600'000u);
        ASSERT_TRUE(file_.setIrdataBuff());
        EXPECT_TRUE(irdatabuff == expected);
    }
}

TEST_F(OpenFile, AFactoryFileLeavesTheFrameCountOfTheFileBefore) {
    ASSERT_TRUE(file_.OpenFilePath(folder_.write("a.wav", WavBuilder{}.add(1).add(2).bytes())));
    ASSERT_TRUE(file_.OpenFilePath(folder_.write("b", factoryFile(3, {}))));
    EXPECT_TRUE(file_.isInteralIR());
    EXPECT_EQ(file_.heldBytes(), 512u);
    file_.setIsInteralIR(false);
    EXPECT_EQ(file_.frameCount(), 2u);
    EXPECT_FALSE(file_.setIrdataBuff()); // there is no format to decode by
}

} // namespace
} // namespace cabslot
