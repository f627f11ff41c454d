#include "simulator/pedal/PedalFrames.h"
#include "tests/simulator/HostReports.h"

#include <gtest/gtest.h>

namespace cabslot::simulator {
namespace {

using namespace testing;

TEST(PedalFramesTest, crcHasTheCataloguesCheckValues) {
    const Bytes digits{'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crcOf(digits), 0xCE3C);
    EXPECT_EQ(crcOf({}), 0xFFFF);
}

TEST(PedalFramesTest, encodesKnownFrames) {
    EXPECT_EQ(encodeFrame(0xEF, {}), allDataRequest);
    EXPECT_EQ(encodeFrame(0xF8, {}), confirmation);
}

TEST(PedalFramesTest, lengthIsLittleEndianAndCountsTheCommand) {
    const Bytes frame = encodeFrame(0xE9, Bytes(515));
    EXPECT_EQ(frame.size(), 522U);
    EXPECT_EQ(Bytes(frame.begin() + 2, frame.begin() + 5), (Bytes{0x04, 0x02, 0xE9}));
}

/// The commands of the frames found, 0 for a frame without one.
Bytes commandsIn(FrameParser& parser, const Bytes& bytes) {
    Bytes commands;
    for (const Frame& frame : parser.feed(bytes))
        commands.push_back(frame.command.value_or(0));
    return commands;
}

struct Stream {
    const char* what;
    Bytes bytes;
    Bytes commands;
    std::size_t skipped;
};

const Stream streams[] = {
    {"zero length", {0xAA, 0x55, 0x00, 0x00, 0xFF, 0xFF}, {0x00}, 0},
    {"garbage before", {1, 0xAA, 2, 0x55, 3, 0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0E}, {0xEF}, 5},
    {"doubled sync", {0xAA, 0xAA, 0x55, 1, 0, 0xF8, 0xA6, 0xD8}, {0xF8}, 1},
    {"bad CRC", {0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0F}, {}, 7},
    {"swapped CRC", {0xAA, 0x55, 1, 0, 0xEF, 0x0E, 0xC4}, {}, 7},
    {"two frames",
     {0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0E, 0xAA, 0x55, 1, 0, 0xF8, 0xA6, 0xD8},
     {0xEF, 0xF8},
     0},
    {"good frame inside a bad one",
     {0xAA, 0x55, 9, 0, 0xE9, 0xAA, 0x55, 1, 0, 0xF8, 0xA6, 0xD8, 7, 8, 9},
     {0xF8},
     8},
    {"length 1019", {0xAA, 0x55, 0xFB, 0x03, 0xAA, 0x55, 1, 0, 0xEF, 0xC4, 0x0E}, {0xEF}, 4},
};

TEST(FrameParserTest, findsGoodFramesWhole) {
    for (const Stream& stream : streams) {
        FrameParser parser;
        EXPECT_EQ(commandsIn(parser, stream.bytes), stream.commands) << stream.what;
        EXPECT_EQ(parser.takeSkipped(), stream.skipped) << stream.what;
        EXPECT_EQ(parser.takeSkipped(), 0U) << stream.what;
    }
}

TEST(FrameParserTest, findsTheSameFramesByteByByte) {
    for (const Stream& stream : streams) {
        FrameParser parser;
        Bytes commands;
        for (const std::uint8_t byte : stream.bytes) {
            const Bytes found = commandsIn(parser, {byte});
            commands.insert(commands.end(), found.begin(), found.end());
        }
        EXPECT_EQ(commands, stream.commands) << stream.what;
        EXPECT_EQ(parser.takeSkipped(), stream.skipped) << stream.what;
    }
}

TEST(FrameParserTest, takesTheLargestFrame) {
    FrameParser parser;
    Bytes payload(1017, 0x5A);
    payload.back() = 0xA5;
    const std::vector<Frame> frames = parser.feed(encodeFrame(0x01, payload));
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_EQ(frames[0].payload, payload);
}

TEST(FrameParserTest, holdsLessThanOneFrameOfAnEndlessStream) {
    FrameParser parser;
    const Bytes start{0xAA, 0x55, 0xFA, 0x03}; // each could begin a frame of 1024 bytes
    std::size_t skipped = 0;
    for (std::size_t fed = 4; fed <= 40000; fed += 4) {
        ASSERT_TRUE(parser.feed(start).empty());
        skipped += parser.takeSkipped();
        ASSERT_LT(fed - skipped, 1024U);
    }
}

} // namespace
} // namespace cabslot::simulator
