// The whole way of the sound: through a sound server of the test's own, back from its monitor.
#include "tests/audition/SoundServer.h"

#include "audition/sound/PhraseFile.h"
#include "audition/sound/SdlPlayer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <span>

namespace cabslot::testing {
namespace {

/// 1 when both are the same but for their level.
double correlation(std::span<const float> a, std::span<const float> b) {
    double ab = 0;
    double aa = 0;
    double bb = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        ab += static_cast<double>(a[i] * b[i]);
        aa += static_cast<double>(a[i] * a[i]);
        bb += static_cast<double>(b[i] * b[i]);
    }
    return aa == 0 || bb == 0 ? 0 : ab / std::sqrt(aa * bb);
}

/// Where in `recording` the part begins.
std::size_t placeOf(std::span<const float> part, std::span<const float> recording) {
    std::size_t best = 0;
    double highest = -1;
    for (std::size_t at = 0; at + part.size() <= recording.size(); ++at)
        if (const double found = correlation(part, recording.subspan(at, part.size()));
            found > highest) {
            highest = found;
            best = at;
        }
    return best;
}

constexpr std::size_t halfSecond = 22050;

TEST_F(SoundServer, PlaysTheRenderingAndChangesItWithoutAGap) {
    const auto phrase = makePhrase(readPhrase(SHARE_FOLDER "/phrases/driven.wav"));
    Samples dark{};
    Samples bright{};
    for (std::size_t i = 0; i < dark.size(); ++i)
        dark[i] = 0.05 * std::exp(-static_cast<double>(i) / 60);
    bright[0] = 0.5;
    bright[1] = -0.45;
    const auto first = std::make_shared<Rendering>(phrase->render(dark, Level::matched));
    const auto second = std::make_shared<Rendering>(phrase->render(bright, Level::matched));

    const Recorder recorder(*this);
    SdlPlayer player;
    ASSERT_EQ(player.start(), "");
    player.play(first);
    waitFor([&] { return player.played() > 2 * halfSecond; });
    player.play(second);
    waitFor([&] { return player.played() > 4 * halfSecond; });
    player.stop();

    const std::vector<float> all = recorded();
    const std::span<const float> one(first->samples);
    const std::span<const float> two(second->samples);
    const std::size_t start = placeOf(one.subspan(halfSecond, 500), all) - halfSecond;
    ASSERT_GT(all.size(), start + 4 * halfSecond);
    const auto heard = [&](std::size_t from) {
        return std::span(all).subspan(start + from, halfSecond);
    };
    // The change came within the 2nd second's first hundredths; before and behind it all is there.
    for (const std::size_t from : {halfSecond / 4, halfSecond})
        EXPECT_GT(correlation(heard(from), one.subspan(from, halfSecond)), 0.99) << from;
    EXPECT_GT(
        correlation(heard(3 * halfSecond - 4000), two.subspan(3 * halfSecond - 4000, halfSecond)),
        0.99);
    EXPECT_LT(std::abs(correlation(heard(halfSecond), two.subspan(halfSecond, halfSecond))), 0.9);
    // No 2 ms of it are silent, and nowhere is a step that neither has.
    constexpr std::size_t piece = 88;
    for (std::size_t from = halfSecond / 4; from < 4 * halfSecond - piece; from += piece) {
        double loudest = 0;
        for (std::size_t i = from; i < from + piece; ++i)
            loudest = std::max<double>(loudest, std::abs(all[start + i]));
        ASSERT_GT(loudest, 0.0005) << "a gap at " << from;
    }
}

TEST_F(SoundServer, ItsEndIsTold) {
    SdlPlayer player;
    ASSERT_EQ(player.start(), "");
    EXPECT_EQ(player.whyStopped(), "");
    server.end(SIGKILL);
    waitFor([&] { return !player.whyStopped().empty(); });
    EXPECT_EQ(player.whyStopped(), "the sound server or the sound device went away");
    player.stop();
    EXPECT_TRUE(player.start().starts_with("no sound device was found ("));
}

} // namespace
} // namespace cabslot::testing
