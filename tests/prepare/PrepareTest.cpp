// Preparing IRs, tested with signals that have known results.
#include "prepare/Prepare.h"
#include "prepare/Loudness.h"
#include "tests/support/WavBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace cabslot::testing {
namespace {

constexpr double pi = std::numbers::pi;
constexpr PrepareOptions keepLevel = {.level = LevelGoal::keep};

/// The gain of `signal`, at `rate`, at one frequency.
double magnitude(std::span<const double> signal, double hertz, double rate = pointsPerSecond) {
    std::complex<double> sum;
    for (std::size_t i = 0; i < signal.size(); ++i)
        sum += signal[i] * std::polar(1.0, -2 * pi * hertz * static_cast<double>(i) / rate);
    return std::abs(sum);
}

class Preparing : public ::testing::Test {
protected:
    /// A mono 24-bit file; `value` gives frame i, full scale 1.0.
    std::string file(std::uint32_t rate, int frames, const std::function<double(int)>& value) {
        WavBuilder wav{.rate = rate, .bits = 24};
        for (int i = 0; i < frames; ++i)
            wav.add(static_cast<std::int32_t>(std::lround(value(i) * 8388607)));
        return folder.write("x.wav", wav.bytes());
    }

    /// Prepares, and checks that the plain conversion passes the result bit for bit.
    PreparedIR prepared(const std::string& path, const PrepareOptions& options) {
        PreparedIR result = prepareFile(path, options);
        EXPECT_EQ(result.whyRefused, "");
        const ReadIR again = readIR(IRFile::of(result.wav, path), path);
        EXPECT_TRUE(again.ir.block == result.ir.block) << "the plain conversion changes it";
        const IRFile& file = again.file;
        EXPECT_TRUE(file.sampleRate() == 44100 && file.bitsPerSample() == 24 &&
                    file.channelCount() == 1 && file.frameCount() <= irPointCount);
        samples = samplesOf(result.ir.block);
        return result;
    }

    TempFolder folder;
    Samples samples{};
};

TEST_F(Preparing, WithEverythingOffThePlainBlockComesOutToTheBit) {
    for (const std::uint32_t rate : {44100U, 48000U, 88200U, 96000U}) {
        for (const std::uint16_t bits : std::initializer_list<std::uint16_t>{8, 16, 24, 32}) {
            WavBuilder wav{.rate = rate, .channels = 2, .bits = bits};
            for (int i = 0; i < 5000; ++i)
                bits == 32 ? wav.addFloat(1.6F * std::sin(0.7F * static_cast<float>(i)))
                           : wav.add(i * 7919);
            const PreparedIR result =
                prepared(folder.write("x.wav", wav.bytes()), PrepareOptions::nothing());
            for (std::size_t i = 0; i < irPointCount; ++i)
                ASSERT_EQ(result.ir.block[i], result.plain[i] & 0xFFFFFFU) << rate << '/' << bits;
            EXPECT_TRUE(result.steps.empty());
        }
    }
}

TEST_F(Preparing, ResamplingLetsNothingFoldDownAndKeepsThePassband) {
    for (const std::uint32_t rate : {88200U, 96000U}) {
        // A burst above half of 44.1 kHz, which plain interpolation aliases.
        const std::string high = file(rate, 2000, [rate](int i) {
            const double hann = (1 - std::cos(2 * pi * i / 2000)) / 2;
            return 0.9 * hann * std::sin(2 * pi * 27000 * i / rate);
        });
        const PreparedIR result = prepared(high, {.trim = false, .level = LevelGoal::keep});
        EXPECT_LT(decibels(peakOf(samples) / 0.9), -100) << rate;
        EXPECT_GT(decibels(peakOf(samplesOf(result.plain)) / 0.9), -3) << "what it is good for";
    }
    for (const std::uint32_t rate : {48000U, 88200U, 96000U}) {
        const int frames = static_cast<int>(rate) / 50; // so it ends in a step
        const auto sound = [&](int i) { return 0.5 * std::exp(-3.0 * i / frames); };
        std::vector<double> source;
        for (int i = 0; i < frames; ++i)
            source.push_back(sound(i));
        EXPECT_EQ(prepared(file(rate, frames, sound), keepLevel).steps.size(), 1U)
            << "what the filter rings is no cut";
        for (double hertz = 20; hertz <= 18000; hertz *= 1.05)
            EXPECT_NEAR(decibels(magnitude(samples, hertz) * rate / pointsPerSecond),
                        decibels(magnitude(source, hertz, rate)), 0.05)
                << rate << ": " << hertz << " Hz";
    }
}

TEST_F(Preparing, TrimsToEightPointsBeforeTheOnset) {
    const auto late = [](int i) { return i < 441 ? 0.0009 : i == 441 ? 0.0011 : 0.1; };
    const PreparedIR result = prepared(file(44100, 1000, late), keepLevel);
    EXPECT_NEAR(samples[7], 0.0009, 1e-6);
    EXPECT_NEAR(samples[8], 0.0011, 1e-6) << "-40 dB of the peak";
    EXPECT_EQ(result.steps, std::vector<std::string>{"Trimmed 9.8 ms before the onset."});
    prepared(file(44100, 1000, late), {.trim = false, .level = LevelGoal::keep});
    EXPECT_NEAR(samples[442], 0.1, 1e-6);
}

TEST_F(Preparing, FadesOnlyWhatIsCut) {
    const auto one = [](int) { return 0.5; };
    prepared(file(44100, 1025, one), keepLevel);
    EXPECT_NEAR(samples[1024 - 89], 0.5, 1e-6);
    EXPECT_NEAR(samples[1024 - 88 + 10], 0.25 * (1 + std::cos(pi * 11 / 89)), 1e-6);
    EXPECT_NEAR(samples[1023], 0.25 * (1 + std::cos(pi * 88 / 89)), 1e-6);
    prepared(file(44100, 1024, one), keepLevel);
    EXPECT_NEAR(samples[1023], 0.5, 1e-6);
    prepared(file(44100, 2000, one), {.fade = 0, .level = LevelGoal::keep});
    EXPECT_NEAR(samples[1023], 0.5, 1e-6);
}

TEST_F(Preparing, ReachesItsLevelAndNeverClips) {
    const auto quiet = [](int i) { return i % 50 == 20 ? -0.0005 : 0.0002; };
    const std::string path = file(44100, 500, quiet);
    prepared(path, {});
    EXPECT_NEAR(decibels(peakOf(samples)), -0.3, 0.001);
    const auto loudness = [this] { return noiseLoudness({samples.begin(), samples.end()}); };
    prepared(path, {.level = LevelGoal::loudness, .loudness = -45});
    EXPECT_NEAR(loudness(), -45, 0.1);
    const PreparedIR held = prepared(path, {.level = LevelGoal::loudness, .loudness = 20});
    EXPECT_NEAR(decibels(peakOf(samples)), -0.3, 0.001);
    EXPECT_NE(held.steps.back().find("more would clip"), std::string::npos);

    const auto loud = WavBuilder{.bits = 32}.addFloat(-3).addFloat(1.5F).addFloat(NAN).bytes();
    prepared(folder.write("loud.wav", loud), keepLevel);
    EXPECT_NEAR(samples[0], -1, 1e-6);
    EXPECT_NEAR(samples[1], 0.5, 1e-6);
    EXPECT_EQ(samples[2], 0);
    prepared(file(44100, 100, [](int) { return 0.0; }), {});
    EXPECT_EQ(peakOf(samples), 0) << "silence stays silence";
}

TEST_F(Preparing, MinimumPhaseKeepsTheMagnitudeAndComesEarlier) {
    Signal source(700);
    for (std::size_t i = 0; i < source.size(); ++i) {
        const auto t = static_cast<double>(i);
        source[i] = 0.2 * (i < 60 ? std::pow(t / 60, 4) : std::exp((60 - t) / 60)) *
                    (std::sin(0.21 * t) + 0.5 * std::sin(0.9 * t) + 0.2 * std::cos(2.1 * t));
    }
    prepared(file(44100, 700, [&](int i) { return source[static_cast<std::size_t>(i)]; }),
             {.minimumPhase = true, .level = LevelGoal::keep});
    const Signal early(samples.begin(), samples.end());
    double highest = 0;
    for (double hertz = 20; hertz < 22000; hertz += 37)
        highest = std::max(highest, magnitude(source, hertz));
    for (double hertz = 20; hertz < 22000; hertz += 37) {
        if (const double was = magnitude(source, hertz); was > 0.001 * highest) {
            EXPECT_NEAR(decibels(magnitude(early, hertz)), decibels(was), 0.1) << hertz;
        }
    }
    double before = 0;
    double after = 0;
    for (std::size_t i = 0; i < source.size(); ++i) {
        before += source[i] * source[i];
        after += early[i] * early[i];
        EXPECT_GE(after, before * (1 - 1e-6)) << i;
    }
}

TEST_F(Preparing, MinimumPhaseOfNotchesPolarityAndLongFiles) {
    constexpr PrepareOptions options = {.minimumPhase = true, .fade = 0, .level = LevelGoal::keep};
    // Two microphones, 1 ms apart: narrow notches of -60 dB.
    const auto comb = [](int i) { return i == 10 ? -0.5 : i == 54 ? -0.499 : 0.0; };
    const PreparedIR result = prepared(file(44100, 60, comb), options);
    for (double hertz = 44100.0 / 88; hertz < 20000; hertz += 44100.0 / 88)
        EXPECT_NEAR(decibels(magnitude(samples, hertz)),
                    decibels(std::abs(0.5 + 0.499 * std::polar(1.0, -2 * pi * hertz * 44 / 44100))),
                    0.1)
            << hertz;
    EXPECT_NEAR(samples[0], -0.5, 0.001) << "the polarity is kept";

    const auto noise = [](int i) { return 0.4 * std::sin(0.1 * i * (1 + i % 7)); };
    const std::string path = file(44100, 100'000, noise);
    EXPECT_NE(prepared(path, options).steps[0].find("the 743.0 ms with the most energy"),
              std::string::npos);
    EXPECT_EQ(prepareFile(path, options, [] { return true; }).whyRefused, "it was interrupted");
}

TEST_F(Preparing, WithoutResamplingTheOtherStepsSeeTheWholeFile) {
    WavBuilder wav{.rate = 48000, .channels = 6, .bits = 24};
    for (int i = 0; i < 3000; ++i) // the first 30 ms are silent
        for (int channel = 0; channel < 6; ++channel)
            wav.add(i < 1440 ? 0 : 600'000 * channel);
    const PreparedIR result = prepared(
        folder.write("x.wav", wav.bytes()),
        {.channel = Channel::mean, .resample = false, .fade = 1, .level = LevelGoal::keep});
    EXPECT_EQ(result.steps, (std::vector<std::string>{"Trimmed 29.8 ms before the onset.",
                                                      "Faded out over the last 1.0 ms."}));
    EXPECT_NEAR(samples[20], 1'500'000 / 8388608.0, 1e-6);
    EXPECT_NEAR(samples[1024 - 46], 1'500'000 / 8388608.0, 1e-4) << "up to the fade";
    EXPECT_NEAR(samples[1023], 0, 1e-3);
}

TEST_F(Preparing, CutsLowsAndHighsBy12DecibelsPerOctave) {
    const auto click = [](int i) { return i == 0 ? 0.9 : 0.0; };
    prepared(file(44100, 1, click), {.lowCut = 200, .highCut = 5000, .level = LevelGoal::keep});
    const std::pair<double, double> rows[] = {
        {50, -24.1}, {200, -3.01}, {1000, 0}, {5000, -3.01}, {10000, -14.78}};
    for (const auto& [hertz, level] : rows) // 10 kHz: the bilinear transform bends it
        EXPECT_NEAR(decibels(magnitude(samples, hertz) / 0.9), level, 0.1) << hertz;
}

TEST_F(Preparing, RaisesNoNoiseAndSaysWhatTrimmingCosts) {
    EXPECT_EQ(prepared(file(44100, 100, [](int i) { return i % 2 * 2e-7; }), {}).steps,
              std::vector<std::string>{
                  "Almost silent: the level was not raised, for it would be that of noise."});
    const auto slow = [](int i) { return i < 2000 ? 0.0089 : i < 2010 ? 0.9 : 0; };
    EXPECT_NE(prepared(file(44100, 3000, slow), {}).steps[0].find("1.9 % (-17.2 dB) of the energy"),
              std::string::npos);
}

TEST_F(Preparing, TakesTheMeanOfTheChannelsAndRefusesWhatIsRefused) {
    WavBuilder stereo{.channels = 2};
    stereo.add(1000).add(-400).add(2000).add(2000);
    const std::string path = folder.write("x.wav", stereo.bytes());
    prepared(path, {.channel = Channel::mean, .level = LevelGoal::keep});
    EXPECT_EQ(samples[0] * 32768, 300);
    EXPECT_EQ(samples[1] * 32768, 2000);
    const std::string slow = folder.write("y.wav", WavBuilder{.rate = 22050}.add(1).bytes());
    EXPECT_EQ(prepareFile(slow, {}).whyRefused.substr(0, 25), "22050 Hz is not supported");
    const std::string factory = folder.write("z.bin", factoryFile(3, std::string(3072, '\x21')));
    EXPECT_EQ(prepared(factory, {}).ir.block[7], 0x212121U);
}

} // namespace
} // namespace cabslot::testing
