// The findings for files with known faults.
#include "tests/support/WavBuilder.h"

#include "analysis/IRSummary.h"

#include <gtest/gtest.h>

#include <limits>

namespace cabslot::testing {
namespace {

using Kinds = std::vector<FindingKind>;

WavBuilder wav(const WavBuilder& format, std::initializer_list<std::pair<int, int>> runs) {
    WavBuilder builder = format;
    for (const auto& [count, sample] : runs)
        for (int i = 0; i < count; ++i)
            builder.add(sample);
    return builder;
}

WavBuilder floats(std::initializer_list<float> samples) {
    WavBuilder builder{.bits = 32, .formatTag = 3};
    for (const float sample : samples)
        builder.addFloat(sample);
    return builder;
}

TEST(Findings, OfEachKindOfFile) {
    constexpr float infinite = std::numeric_limits<float>::infinity();
    constexpr float none = std::numeric_limits<float>::quiet_NaN();
    using enum FindingKind;
    struct Row {
        std::string bytes;
        Kinds kinds;
        std::string says;     ///< text in the first finding
        std::string frames{}; ///< text about the frames; empty: anything
    };
    WavBuilder liar = wav({}, {{10, 999}});
    liar.dataSize = 0xFFFFFFF0;
    WavBuilder commented = wav({}, {{30, 999}});
    commented.beforeData = chunk("LIST", std::string("INFOmydata\4\0\0\0abcdefgh", 22));
    const Row rows[] = {
        {wav({}, {{1, 32767}, {1023, 0}}).bytes(), {}, ""}, // one point at full scale is normal
        {wav({}, {{20, 0}}).bytes(), {silent}, "all points are zero"},
        {wav({}, {{20, 1}}).bytes(), {almostSilent}, "the peak is at -90.31 dBFS"},
        {wav({}, {{20, 100}}).bytes(), {veryQuiet}, "the peak is at -50.31 dBFS"},
        {wav({.channels = 4}, {{400, 5}}).bytes(),
         {tooManyChannels},
         "4 channels: only files",
         "100, of which none is used"},
        {wav({.bits = 8}, {{99, 128}}).bytes(), {eightBits}, "store silence as 128"},
        {wav({}, {{1, 9}, {3, 32767}, {1, 0}}).bytes(), {clipped}, "Clipped: 3 neighbour"},
        {wav({.bits = 24}, {{1, 8200000}, {1, -8200000}}).bytes(), {wrapped}, "1 jump "},
        {wav({.rate = 88200}, {{2050, 8192}, {2050, 4096}}).bytes(),
         {cutOff},
         "the first 23.2 ms of 46.5 ms; 20.0 % (-7.0 dB) of the energy is lost."},
        {wav({}, {{1, 999}, {1023, 0}, {1, 999}}).bytes(), {cutOff}, "23.2 ms; 50.0 % (-3.0 dB)"},
        {wav({}, {{600000, 999}}).bytes(), // only the first MiB of such a long file is inspected
         {cutOff},
         "of more than 11888.1 ms; at least 99.8 % (0.0 dB)"},
        {wav({.channels = 2}, {{440, 0}, {442, 9}, {100, 11}, {2, 10000}}).bytes(), // -60 dB
         {startsLate},
         "10.0 ms of silence come first, which are heard as a delay and leave 13.2 ms"},
        {wav({}, {{1024, 0}, {3, 1}}).bytes(), {silent, cutOff}, "Silent"},
        {floats({0.1F, 1.5F, -1.2F}).bytes(),
         {beyondFullScale},
         "2 samples too large, by up to 3.5 dB."},
        {floats({infinite, none, 0.5F}).bytes(),
         {beyondFullScale},
         "full scale: 2 samples infinite or not a number"},
        {liar.bytes(),
         {claimsMore}, // and no cutOff: the missing frames are not counted
         "claims 2147483640 frames but holds 10.",
         "10 (the file claims 2147483640), all of which are used"},
        {commented.bytes(), {misplacedTag}, "\"data\" is inside the \"LIST\" chunk"},
        {factoryFile(3, std::string(5000, '\x11')), {}, "", "1024, all of which are used"},
        {factoryFile(3, std::string(6, '\x11')), {}, "", "2, all of which are used"},
    };
    const TempFolder folder;
    for (const Row& row : rows) {
        const IRSummary summary = summaryOf(readIR(folder.write("x.wav", row.bytes)));
        Kinds kinds;
        std::string said;
        for (const Finding& finding : summary.findings) {
            kinds.push_back(finding.kind);
            said += finding.text + "\n";
        }
        EXPECT_EQ(kinds, row.kinds) << row.says << " but was said: " << said;
        EXPECT_NE(said.find(row.says), std::string::npos) << said;
        EXPECT_TRUE(row.frames.empty() || row.frames == summary.frames) << summary.frames;
    }
}

} // namespace
} // namespace cabslot::testing
