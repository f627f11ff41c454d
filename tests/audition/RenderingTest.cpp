// Rendering, loudness and mixing, without a sound device.
#include "tests/support/WavBuilder.h"

#include "audition/sound/Convolver.h"
#include "audition/sound/Loudness.h"
#include "audition/sound/Mixer.h"
#include "audition/sound/PhraseFile.h"
#include "audition/sound/StarvationMeter.h"
#include "irfile/IRFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <random>

namespace cabslot::testing {
namespace {

std::vector<float> noise(std::size_t count) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> value(-1, 1);
    std::vector<float> samples(count);
    std::generate(samples.begin(), samples.end(), [&] { return value(random); });
    return samples;
}

Samples impulse(double level, std::size_t at = 0) {
    Samples ir{};
    ir[at] = level;
    return ir;
}

/// A decaying noise through a one-pole low-pass filter, whose sum cannot exceed full scale.
Samples decay(double level, double share) {
    const std::vector<float> random = noise(irPointCount);
    Samples ir{};
    double state = 0;
    for (std::size_t i = 0; i < irPointCount; ++i) {
        state += share * (random[i] * std::exp(-static_cast<double>(i) / 80) - state);
        ir[i] = level / 40 * state;
    }
    return ir;
}

double peakOf(const std::vector<float>& samples) {
    return std::abs(*std::ranges::max_element(samples, {}, [](float x) { return std::abs(x); }));
}

// Sizes around those of the convolver's parts.
TEST(Convolver, EqualsDirectConvolution) {
    const Samples ir = decay(1, 1);
    for (const std::size_t size : {1UL, 5UL, 7168UL, 7169UL, 7170UL, 14338UL, 14339UL, 30000UL}) {
        const std::vector<float> phrase = noise(size);
        const std::vector<float> found = Convolver(phrase).convolve(ir);
        ASSERT_EQ(found.size(), size + 1023);
        for (std::size_t i = 0; i < found.size(); ++i) {
            double sum = 0;
            for (std::size_t k = i < size ? 0 : i - size + 1; k < std::min(i + 1, ir.size()); ++k)
                sum += ir[k] * static_cast<double>(phrase[i - k]);
            ASSERT_NEAR(found[i], sum, 1e-6) << size << " samples, at " << i;
        }
    }
}

class ShippedPhrase : public ::testing::TestWithParam<const char*> {
protected:
    ShippedPhrase() : found(readPhrase(std::string(SHARE_FOLDER "/phrases/") + GetParam())) {}

    PhraseSamples found;
};

TEST_P(ShippedPhrase, IsEquallyLoudThroughAnyIR) {
    ASSERT_EQ(found.whyNot, "");
    EXPECT_LE(found.samples.size(), 441000U);
    const std::unique_ptr<Phrase> phrase = makePhrase(found);
    const ReadIR demo = readIR(SHARE_FOLDER "/examples/Demo 1x12.wav");
    ASSERT_EQ(demo.whyRefused, "");
    for (const Samples& ir : {samplesOf(demo.ir.block), impulse(1), impulse(0.001, 500),
                              decay(1, 1), decay(0.02, 0.01), decay(1, 0.05)}) {
        const Rendering rendering = phrase->render(ir, Level::matched);
        EXPECT_NEAR(loudnessOf(rendering.samples), matchedLoudness, 0.25);
        EXPECT_NEAR(rendering.loudness, matchedLoudness, 0.25);
        EXPECT_FALSE(rendering.heldByPeaks);
    }
}

INSTANTIATE_TEST_SUITE_P(Both, ShippedPhrase, ::testing::Values("clean.wav", "driven.wav"));

// A click's peak is far above its loudness, and so is that of an IR that sums up a whole phrase.
TEST(Level, PeaksStayBelowFullScale) {
    const double highest = std::pow(10, highestPeak / 20) + 1e-6;
    std::vector<float> clicks(44100);
    for (std::size_t i = 0; i < clicks.size(); i += 11025)
        clicks[i] = 0.5F;
    Samples summing{};
    summing.fill(0.9);
    for (const auto& [samples, ir] :
         {std::pair(clicks, impulse(1)), std::pair(noise(44100), summing)})
        for (const Level level : {Level::matched, Level::asItIs}) {
            const Rendering rendering = makePhrase({samples, false, {}})->render(ir, level);
            EXPECT_LE(peakOf(rendering.samples), highest);
            EXPECT_EQ(rendering.heldByPeaks,
                      ir[1] != 0 ? level == Level::asItIs : level == Level::matched);
        }
    // Where the end and the start of the loop overlap, the peak may exceed both.
    Rendering overlap{.samples = std::vector<float>(4), .loop = 3};
    overlap.samples[0] = overlap.samples[3] = 0.8F;
    setLevel(overlap, Level::asItIs);
    EXPECT_LE(overlap.samples[0] + overlap.samples[3], highest);
}

std::shared_ptr<Rendering> sounding(std::vector<float> samples, std::size_t loop) {
    return std::make_shared<Rendering>(Rendering{.samples = std::move(samples), .loop = loop});
}

std::vector<float> pull(Mixer& mixer, std::size_t count) {
    std::vector<float> output(count, -7);
    mixer.pull(output);
    return output;
}

TEST(Mixer, LoopsWithTheEndOfTheTimeBefore) {
    Mixer mixer;
    EXPECT_EQ(pull(mixer, 2), (std::vector<float>{0, 0}));
    std::vector<float> samples(1200);
    std::iota(samples.begin(), samples.end(), 0.0F);
    mixer.play(sounding(samples, 1000));
    const std::vector<float> found = pull(mixer, 2300);
    EXPECT_LT(found[1], 0.01F); // it fades in
    EXPECT_EQ(found[900], 900);
    EXPECT_EQ(found[1000], 0 + 1000);
    EXPECT_EQ(found[1199], 199 + 1199);
    EXPECT_EQ(found[1200], 200);
    EXPECT_EQ(found[2001], 1 + 1001);
}

TEST(Mixer, CrossFadesAtTheSamePlaceWithoutAStep) {
    Mixer mixer;
    constexpr std::size_t size = 10000;
    std::vector<float> up(size);
    std::iota(up.begin(), up.end(), 0.0F);
    std::vector<float> down(size);
    std::ranges::transform(up, down.begin(), std::negate{});
    mixer.play(sounding(up, size));
    pull(mixer, 2000);
    mixer.play(sounding(std::vector<float>(size, 5000), size)); // replaced before it is heard
    mixer.play(sounding(down, size));
    const std::vector<float> found = pull(mixer, 2000);
    EXPECT_NEAR(found[0], 2000, 5);
    EXPECT_NEAR(found[Mixer::fadeSize / 2], 0, 10);
    EXPECT_EQ(found[Mixer::fadeSize], -2000 - static_cast<float>(Mixer::fadeSize));
    for (std::size_t i = 1; i < found.size(); ++i)
        ASSERT_NEAR(found[i], found[i - 1], 12); // the steepest part of 5800 over 20 ms
    EXPECT_EQ(mixer.changes(), 2U);
}

TEST(Mixer, AChangeDuringAFadeWaitsForItsEnd) {
    Mixer mixer;
    mixer.play(sounding(std::vector<float>(100, 1), 100));
    pull(mixer, 100);
    mixer.play(sounding(std::vector<float>(100, 0.5), 100));
    float before = pull(mixer, 1).front();
    for (const float sample : pull(mixer, 3 * Mixer::fadeSize)) {
        ASSERT_NEAR(sample, before, 0.002);
        before = sample;
    }
    EXPECT_EQ(before, 0.5F);
    mixer.play(nullptr);
    EXPECT_FALSE(mixer.isSilent());
    pull(mixer, Mixer::fadeSize + 1);
    EXPECT_TRUE(mixer.isSilent());
}

TEST(PhraseFile, IsMixedAndBroughtToItsRate) {
    const TempFolder folder;
    for (const int hertz : {441, 19845}) { // treble, too
        WavBuilder wav{.rate = 96000, .channels = 2};
        for (int i = 0; i < 96000; ++i)
            wav.add(static_cast<int>(16000 * std::sin(2 * std::numbers::pi * hertz * i / 96000)))
                .add(0);
        const PhraseSamples phrase = readPhrase(folder.write("Mine.wav", wav.bytes()));
        ASSERT_EQ(phrase.samples.size(), 44100U);
        for (std::size_t i = 1000; i < 43000; ++i)
            ASSERT_NEAR(phrase.samples[i],
                        16000.0 / 65536 *
                            std::sin(2 * std::numbers::pi * hertz * static_cast<double>(i) / 44100),
                        1e-3);
    }
}

TEST(PhraseFile, RefusesWhatIsNoPhrase) {
    const TempFolder folder;
    WavBuilder brief{.samples = std::string(40000, 'x')};
    WavBuilder silent{.samples = std::string(2 * 44100, '\0')};
    const std::pair<std::string, std::string> cases[] = {
        {folder.write("brief.wav", brief.bytes()), "it is shorter than half a second"},
        {folder.write("silent.wav", silent.bytes()), "it is silent"},
        {folder.path("none.wav"), "there is no such file"},
        {folder.path().string(), "it is a folder; choose a file in it"},
        {folder.write("fast.wav", WavBuilder{.rate = 800'000}.bytes()),
         "its sample rate, 800000 Hz, is beyond 768000 Hz"},
    };
    for (const auto& [path, why] : cases)
        EXPECT_EQ(readPhrase(path).whyNot, why);
    for (const std::string name : {"text.wav", "no header.gsm"})
        EXPECT_TRUE(readPhrase(folder.write(name, std::string(99'000, 'x')))
                        .whyNot.starts_with("it is not a readable sound file: "));
}

TEST(Output, IsStarvedIfItsLeadShrinksForGood) {
    StarvationMeter meter;
    double now = 0;
    const auto play = [&](int pulls, double late) { // two pulls at once, as from a large buffer
        for (int i = 0; i < pulls; ++i) {
            meter.taken(441, now += i % 2 * 0.02, 44100);
            meter.taken(0, now + late, 44100);
        }
    };
    play(600, 0.005);
    EXPECT_FALSE(meter.starved());
    now += 0.02;
    play(300, 0);
    EXPECT_TRUE(meter.starved());
}

} // namespace
} // namespace cabslot::testing
