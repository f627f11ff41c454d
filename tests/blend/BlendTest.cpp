// Aligning, shifting, mixing and comparing IRs. Cabinets are formulas that are evaluated at any
// fraction of a point, so what is right needs none of the code that is tested.
#include "blend/Blend.h"
#include "analysis/Response.h"
#include "blend/Compare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>
#include <random>

namespace cabslot::testing {
namespace {

constexpr double pi = std::numbers::pi;

Block blockOf(const std::function<double(double point)>& value) {
    Block block{};
    for (std::size_t i = 0; i < block.size(); ++i)
        block[i] = static_cast<std::uint32_t>(std::clamp(
                       std::lround(value(static_cast<double>(i)) * 8388608), -8388608L, 8388607L)) &
                   0xFFFFFF;
    return block;
}

/// Some resonances of a loudspeaker, from `onset` on; `colour` shifts their frequencies.
double cabinetAt(double point, double onset, double colour = 1) {
    struct Mode {
        double hertz, decay, level; // decay in points
    };
    constexpr Mode modes[] = {{95, 110, 0.3},  {420, 90, 0.4},   {1100, 50, 0.5},
                              {2600, 25, 1.1}, {4300, 15, -0.8}, {7000, 8, 0.3}};
    const double t = point - onset;
    double sum = 0;
    for (const Mode& mode : modes) {
        const double rise = t / (t + 12); // so that it is nearly band-limited
        if (t > 0)
            sum += mode.level * rise * rise * rise * std::exp(-t / mode.decay) *
                   std::sin(2 * pi * mode.hertz * colour * t / pointsPerSecond);
    }
    return 0.8 * sum;
}

Block cabinet(double onset, double factor = 1, double colour = 1) {
    return blockOf([=](double point) { return factor * cabinetAt(point, onset, colour); });
}

/// Noise whose level falls to 1/e within `decay` points.
Block noise(unsigned seed, double decay) {
    std::mt19937 random(seed);
    std::normal_distribution<> normal;
    return blockOf([&](double point) { return 0.2 * std::exp(-point / decay) * normal(random); });
}

Samples noisy(const Block& block, unsigned seed) {
    Samples samples = samplesOf(block);
    double energy = 0;
    for (const double sample : samples)
        energy += sample * sample;
    std::mt19937 random(seed);
    std::normal_distribution<> normal(0, 0.01 * std::sqrt(energy / irPointCount)); // -40 dB
    for (double& sample : samples)
        sample += normal(random);
    return samples;
}

double magnitude(std::span<const double> signal, double hertz) {
    std::complex<double> sum;
    for (std::size_t i = 0; i < signal.size(); ++i)
        sum += signal[i] * std::polar(1.0, -2 * pi * hertz * static_cast<double>(i) / 44100);
    return std::abs(sum);
}

/// The largest difference of two blocks, in steps of 24 bits.
double largestStep(const Block& one, const Block& other) {
    const Samples a = samplesOf(one);
    const Samples b = samplesOf(other);
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]) * 8388608);
    return largest;
}

TEST(Aligning, FindsShiftAndPolarityWithinA50thOfAPoint) {
    for (const double shift :
         {0.0, 0.1, 0.5, 3.33, -0.75, 17.77, 18.0, 100.25, -100.6, 250.9, 400.0}) {
        for (const double sign : {1.0, -1.0}) {
            const double onset = shift < 0 ? 20 - shift : 20;
            const Block first = cabinet(onset);
            const Block second = cabinet(onset + shift, sign * 0.6);
            const Alignment clean = align(samplesOf(first), samplesOf(second));
            EXPECT_TRUE(clean.isClear);
            EXPECT_NEAR(clean.shift, shift, 0.02);
            EXPECT_EQ(clean.isOpposite, sign < 0) << shift;
            for (unsigned seed = 1; seed <= 20; seed += 2) {
                const Alignment found = align(noisy(first, seed), noisy(second, seed + 1));
                EXPECT_NEAR(found.shift, shift, 0.02) << "with noise at -40 dB";
                EXPECT_EQ(found.isOpposite, sign < 0) << shift;
            }
        }
    }
}

TEST(Aligning, RefusesWhatHasNothingInCommon) {
    for (const double decay : {1e9, 200.0, 40.0}) {
        for (unsigned seed = 0; seed < 60; seed += 2) {
            const Alignment found =
                align(samplesOf(noise(seed, decay)), samplesOf(noise(seed + 1, decay)));
            EXPECT_FALSE(found.isClear) << decay << ' ' << seed << ' ' << found.likeness;
            EXPECT_EQ(found.shift, 0);
        }
    }
    EXPECT_FALSE(align(samplesOf(cabinet(20)), Samples{}).isClear);
    const auto hum = [](double phase) { // every period matches as well as the next
        return samplesOf(
            blockOf([=](double i) { return 0.5 * std::sin(2 * pi * i / 49 + phase); }));
    };
    EXPECT_FALSE(align(hum(0), hum(1)).isClear);
    EXPECT_TRUE(align(samplesOf(cabinet(20)), samplesOf(cabinet(33, -1, 1.05))).isOpposite)
        << "alike is enough";
}

TEST(Shifting, KeepsTheResponseAndThePointsOfAFormula) {
    const auto click = [](double point) { return point == 300 ? 0.9 : 0; };
    for (const double shift : {0.5, -0.25, 7.9, -100.01, 12.0}) {
        for (const Block& source : {blockOf(click), cabinet(120)}) {
            const Samples before = samplesOf(source);
            const ShiftedIR after = shifted(before, shift);
            for (double hertz = 20; hertz <= 18000; hertz *= 1.03)
                ASSERT_NEAR(decibels(magnitude(after.points, hertz)),
                            decibels(magnitude(before, hertz)), 0.05)
                    << shift << ": " << hertz << " Hz";
        }
        const ShiftedIR moved = shifted(samplesOf(cabinet(120)), shift);
        for (int place = 0; place < 900; ++place)
            EXPECT_NEAR(moved.at(place), cabinetAt(place, 120 + shift), 0.0003) << place;
    }
}

TEST(Mixing, AloneIsBitForBitAndEqualStaysEqual) {
    const std::array<Block, 2> pair = {cabinet(20), cabinet(57.4, -0.5, 1.1)};
    for (const bool aligns : {true, false}) {
        const Blend blend(pair, aligns, std::array{Polarity::found, Polarity::turned});
        EXPECT_TRUE(blend.mix(std::array{100.0, 0.0}).block == pair[0]);
        EXPECT_TRUE(blend.mix(std::array{0.0, 0.3}).block == pair[1]);
        const Blend same(std::array{pair[1], pair[1]}, aligns);
        for (const double share : {1.0, 37.0, 50.0, 99.9})
            EXPECT_TRUE(same.mix(std::array{100 - share, share}).block == pair[1]) << share;
    }
}

TEST(Mixing, SumsWithinOneStepAndNeverWraps) {
    const std::array<Block, 3> three = {noise(1, 300), noise(2, 300), cabinet(20)};
    const std::array weights = {50.0, 20.0, 30.0};
    const Mixed sum =
        Blend(three, false, std::array{Polarity::asItIs, Polarity::turned}).mix(weights);
    const Samples a = samplesOf(three[0]);
    const Samples b = samplesOf(three[1]);
    const Samples c = samplesOf(three[2]);
    const Samples result = samplesOf(sum.block);
    for (std::size_t i = 0; i < irPointCount; ++i)
        ASSERT_NEAR(result[i], 0.5 * a[i] - 0.2 * b[i] + 0.3 * c[i], 1 / 8388608.0);
    EXPECT_EQ(sum.gain, 0);

    const Blend opposite(
        std::array{blockOf([](double) { return -1.0; }), blockOf([](double) { return -1.0; })},
        false, std::array{Polarity::turned, Polarity::turned});
    const Mixed held = opposite.mix(std::array{1.0, 1.0});
    EXPECT_LT(held.gain, 0) << "8388608 does not fit";
    EXPECT_EQ(held.block[5], 0x7FFFFFU);
}

TEST(Mixing, AlignsEachToTheFirstAndLosesNoOnset) {
    struct Row {
        double first, second, sign; // onsets
        std::size_t atMost;         // points of delay
        const char* text;
    };
    const Row rows[] = {{40, 57.64, -1, 0, "shifted 0.40 ms earlier, polarity turned"},
                        {57.64, 40, 1, 0, "shifted 0.40 ms later"},
                        {40, 58, 1, 0, "shifted 0.41 ms earlier"},
                        {40, 40, -1, 0, "starts at the same time, polarity turned"},
                        {0, 0.5, 1, 16, "shifted 0.01 ms earlier"}};
    for (const Row& row : rows) {
        const std::array<Block, 2> pair = {cabinet(row.first), cabinet(row.second, row.sign)};
        const Blend blend(pair, true);
        EXPECT_EQ(fitText(blend.fits()[1]), row.text);
        EXPECT_LE(blend.delay(), row.atMost);
        const Block mixed = blend.mix(std::array{1.0, 1.0}).block;
        const Block right = cabinet(row.first + static_cast<double>(blend.delay()));
        EXPECT_LT(largestStep(mixed, right), 0.0005 * 8388608) << row.text;
    }
    const auto click = [](double at) {
        return blockOf([at](double i) { return i == at ? 0.9 : i == at + 1 ? -0.2 : 0.0; });
    };
    const Blend early(std::array{click(0), cabinet(200), click(30)}, true);
    EXPECT_EQ(early.fits()[2].shift, -30);
    EXPECT_TRUE(early.mix(std::array{1.0, 0.0, 1.0}).block ==
                click(static_cast<double>(early.delay())));
    const auto withClick = [](double i) { return i == 0 ? 0.2 : cabinetAt(i, 200); };
    const Blend late(std::array{cabinet(50), blockOf(withClick)}, true);
    EXPECT_NEAR(static_cast<double>(late.delay()), 150, 16) << "the click would be lost";
    EXPECT_LT(late.fits()[1].lost, 0.001);
    const Blend apart(std::array{noise(1, 100), noise(2, 100)}, true);
    EXPECT_EQ(fitText(apart.fits()[1]), "no clear match, so nothing is shifted");
    const Blend first(std::array{cabinet(20), cabinet(20)}, true,
                      std::array{Polarity::turned, Polarity::found});
    EXPECT_TRUE(first.fits()[1].isTurned) << "the others follow the first";
    const Blend tail(std::array{noise(3, 1e9), noise(3, 1e9)}, false);
    EXPECT_EQ(fitText(tail.fits()[1]), "");
}

TEST(Comparing, TellsLevelOctavesAndResidue) {
    const Samples first = samplesOf(cabinet(40));
    const auto same = compare(first, first);
    EXPECT_EQ(residueText(same->residue), "they null completely");
    const auto moved = compare(first, samplesOf(cabinet(57.64, -0.5)));
    EXPECT_NEAR(moved->level, -6.02, 0.01);
    EXPECT_NEAR(moved->alignment.shift, 17.64, 0.02);
    EXPECT_TRUE(moved->alignment.isOpposite);
    EXPECT_LT(moved->residue, -60) << "they null once they are aligned";
    for (std::size_t i = 0; i < 9; ++i) // up to 11 kHz: above, there is hardly any sound
        EXPECT_NEAR(moved->differences[i], -6.02, 0.1) << octaves[i];

    // A shelf: y[n] = x[n] + x[n-1], 2 cos(w / 2), is 6 dB in the lows and falls to 2.7 dB at 16
    // kHz.
    Samples warmer = first;
    for (std::size_t i = 1; i < warmer.size(); ++i)
        warmer[i] = (first[i] + first[i - 1]) / 2;
    const auto shelf = compare(first, warmer);
    EXPECT_NEAR(shelf->differences[2], 0, 0.05);
    EXPECT_NEAR(shelf->differences[7], decibels(std::cos(pi * 4000 / 44100)), 0.3);
    EXPECT_GT(shelf->residue, -60);
    EXPECT_FALSE(compare(first, Samples{}).has_value());
}

} // namespace
} // namespace cabslot::testing
