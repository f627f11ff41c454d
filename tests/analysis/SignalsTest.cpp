// Samples, envelope, level and response of signals whose answers theory gives.
#include "tests/support/Signals.h"

#include "analysis/Words.h"

#include <gtest/gtest.h>

namespace cabslot::testing {
namespace {

constexpr double nothing = 0;

TEST(Signals, PointsAreTheLow24BitsWithTheirSign) {
    Block block{};
    block[0] = 0x800000;
    block[1] = 0x7FFFFF;
    block[2] = 0x1400000; // what 2.5 leaves; the pedal gets three bytes of it
    block[3] = 0xFFFFFF;
    const Samples samples = samplesOf(block);
    EXPECT_EQ(samples[0], -1.0);
    EXPECT_EQ(samples[1], 8388607 / 8388608.0);
    EXPECT_EQ(samples[2], 0.5);
    EXPECT_EQ(samples[3], -1 / 8388608.0);
}

TEST(Signals, NoWidthHidesAPointOrTearsTheCurve) {
    const Samples samples = impulse(517);
    for (const std::size_t columns : {1U, 7U, 300U, 1023U, 4001U}) {
        const std::vector<Range> ranges = envelope(samples, columns);
        ASSERT_EQ(ranges.size(), columns);
        double highest = 0;
        for (std::size_t i = 0; i < columns; ++i) {
            highest = std::max(highest, ranges[i].highest);
            if (i > 0) {
                EXPECT_LE(ranges[i].lowest, ranges[i - 1].highest + 1e-9) << columns;
                EXPECT_GE(ranges[i].highest, ranges[i - 1].lowest - 1e-9) << columns;
            }
        }
        EXPECT_NEAR(highest, 1, columns > 1023 ? 0.5 : 1e-6) << columns;
    }
}

TEST(Signals, Levels) {
    const auto square = [](double point) { return std::fmod(point, 2) == 0 ? 0.5 : -0.5; };
    EXPECT_NEAR(*peakDbfs(signal(square)), -6.02, 0.005);
    EXPECT_NEAR(*rmsDbfs(signal(square)), -6.02, 0.005);
    EXPECT_NEAR(*rmsDbfs(sine(pointsPerSecond / 8, 1)), -3.01, 0.005);
    EXPECT_NEAR(*rmsDbfs(impulse(9)), -30.10, 0.005);
    EXPECT_EQ(peakDbfs(Samples{}), std::nullopt);
    EXPECT_EQ(rmsDbfs(Samples{}), std::nullopt);
}

TEST(Signals, AnImpulseIsFlatWhereverItStands) {
    for (const double at : {0.0, 1.0, 1023.0})
        for (const Range& column : Response(impulse(at)).columns(500)) {
            EXPECT_NEAR(column.lowest, nothing, 0.01);
            EXPECT_NEAR(column.highest, nothing, 0.01);
        }
}

// Half now and half a hundred points later: silent at the odd multiples of 220.5 Hz.
TEST(Signals, ACombHasAllItsNotchesOnAnAxisOfAnyWidth) {
    const Response response(
        signal([](double point) { return point == 0 || point == 100 ? 0.5 : 0.0; }));
    for (const std::size_t columns : {100U, 640U}) {
        const std::vector<Range> ranges = response.columns(columns);
        for (double notch = 220.5; notch < highestShownHz; notch += 441) {
            const auto column =
                static_cast<std::size_t>(placeOf(notch) * static_cast<double>(columns));
            EXPECT_LT(ranges[column].lowest, -40) << notch;
        }
    }
    EXPECT_NEAR(response.over(4410, 4410).highest, nothing, 0.01);
    EXPECT_NEAR(response.over(441 / 3.0, 441 / 3.0).highest, -6.02, 0.02); // cos 60 degrees
}

TEST(Signals, ASinePeaksAtItsFrequency) {
    for (const double hertz : {100.0, 1000.0, 19000.0}) {
        const Response::Peak peak = Response(sine(hertz, 0.5)).peak();
        EXPECT_NEAR(peak.hertz, hertz, 3);
        EXPECT_NEAR(peak.decibels, decibels(0.5 * irPointCount / 2), 0.3);
    }
}

TEST(Signals, AOnePoleDecayIsDownByThreeDecibelsWhereTheorySays) {
    const double pole = 0.9;
    const Response response(signal([=](double point) { return 0.1 * std::pow(pole, point); }));
    const double corner = std::acos((4 * pole - 1 - pole * pole) / (2 * pole)) * pointsPerSecond /
                          (2 * std::numbers::pi); // 740 Hz
    EXPECT_NEAR(response.over(0, 0).highest, nothing, 0.01);
    EXPECT_NEAR(response.over(corner, corner).highest, -3.01, 0.01);
}

TEST(Signals, SilenceHasALevelThatCanBeDrawn) {
    EXPECT_EQ(Response(Samples{}).over(lowestShownHz, highestShownHz).highest, quietest);
}

TEST(Signals, NumbersInWords) {
    EXPECT_EQ(fixedText(-0.001, 2), "0.00");
    EXPECT_EQ(fixedText(-1.005, 1), "-1.0");
    EXPECT_EQ(shareText(0.123), "12.3 % (-9.1 dB)");
    EXPECT_EQ(shareText(0.0005), "0.050 % (-33.0 dB)");
    EXPECT_EQ(shareText(1e-9), "less than 0.001 % (-90.0 dB)");
}

} // namespace
} // namespace cabslot::testing
