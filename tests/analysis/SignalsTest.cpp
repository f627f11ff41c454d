// Samples, envelope, level and response of signals with known theoretical results.
#include "analysis/Response.h"
#include "analysis/Words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

namespace cabslot::testing {
namespace {

constexpr double nothing = 0;

/// The block of a signal given point by point, rounded to 24 bits.
Samples signal(const std::function<double(double point)>& value) {
    Block block{};
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = static_cast<std::uint32_t>(
                       std::min(std::lround(value(static_cast<double>(i)) * 8388608), 8388607L)) &
                   0xFFFFFF;
    return samplesOf(block);
}

Samples impulse(double at) {
    return signal([at](double point) { return point == at ? 1.0 : 0.0; });
}

Samples sine(double hertz, double amplitude) {
    return signal([=](double point) {
        return amplitude * std::sin(2 * std::numbers::pi * hertz * point / pointsPerSecond);
    });
}

TEST(Signals, PointsAreTheLow24BitsWithTheirSign) {
    Block block{0x800000, 0x7FFFFF, 0x1400000, 0xFFFFFF}; // the third is 2.5, which exceeds 24 bits
    const Samples samples = samplesOf(block);
    EXPECT_EQ((std::array{samples[0], samples[1], samples[2], samples[3]}),
              (std::array{-1.0, 8388607 / 8388608.0, 0.5, -1 / 8388608.0}));
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

// Half now and half a hundred points later: zero at the odd multiples of 220.5 Hz.
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

// The axis of the response plot.
TEST(Signals, AnImpulseIsFlatAndSilenceHasALevelThatCanBeDrawn) {
    for (const Range& column : Response(impulse(1023)).columns(500)) {
        EXPECT_NEAR(column.lowest, nothing, 0.01);
        EXPECT_NEAR(column.highest, nothing, 0.01);
    }
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
