// The whole sound path: through a private sound server and back from its monitor.
#include "tests/audition/SoundServer.h"

#include "audition/sound/PhraseFile.h"
#include "audition/sound/SdlPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace cabslot::testing {
namespace {

/// 1 if both are equal except for their level.
double correlation(std::span<const float> a, std::span<const float> b) {
    const auto dot = [](std::span<const float> x, std::span<const float> y) {
        return std::inner_product(x.begin(), x.end(), y.begin(), 0.0);
    };
    const double energies = dot(a, a) * dot(b, b);
    return energies == 0 ? 0 : dot(a, b) / std::sqrt(energies);
}

/// The position in `recording` where the part begins.
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

constexpr std::size_t second = 44100;
constexpr std::size_t window = second / 20;

/// What is heard in each window, after the first quarter of a second: 1 the first, 3 the second, 2
/// neither alone.
std::string heard(std::span<const float> recording, std::span<const float> one,
                  std::span<const float> two) {
    std::string windows;
    for (std::size_t at = second / 4; at + window <= recording.size(); at += window) {
        const auto is = [&](std::span<const float> what) {
            return correlation(recording.subspan(at, window), what.subspan(at, window)) > 0.99;
        };
        windows += is(one) ? '1' : is(two) ? '3' : '2';
    }
    return windows;
}

/// The longest silence, in samples.
std::size_t longestGap(std::span<const float> recording) {
    std::size_t longest = 0;
    std::size_t gap = 0;
    for (const float sample : recording) {
        gap = sample == 0 ? gap + 1 : 0;
        longest = std::max(longest, gap);
    }
    return longest;
}

class Changing : public SoundServer {
protected:
    Changing() : phrase(makePhrase(readPhrase(SHARE_FOLDER "/phrases/driven.wav"))) {
        for (std::size_t i = 0; i < dark.size(); ++i)
            dark[i] = 0.05 * std::exp(-static_cast<double>(i) / 60);
        bright[0] = 0.5;
        bright[1] = -0.45;
        one = std::make_shared<Rendering>(phrase->render(dark, Level::matched));
        two = std::make_shared<Rendering>(phrase->render(bright, Level::matched));
    }

    /// A second of each phrase as it was played, from its start.
    std::vector<float> play() {
        const Recorder recorder(*this);
        SdlPlayer player;
        EXPECT_EQ(player.start(), "");
        player.play(one);
        waitFor([&] { return player.played() > second; });
        player.play(two);
        waitFor([&] { return player.played() > 2 * second; });
        player.stop();
        const std::vector<float> all = recorded();
        const auto mark = std::span<const float>(one->samples).subspan(second / 2, 500);
        const std::size_t place = placeOf(mark, all);
        const std::size_t start = place - second / 2;
        if (place < second / 2 || start + 2 * second > all.size()) // it was not recorded well
            return {};
        return std::vector<float>(&all.at(start), &all.at(start + 2 * second - second / 8));
    }

    std::unique_ptr<Phrase> phrase;
    Samples dark{};
    Samples bright{};
    std::shared_ptr<const Rendering> one;
    std::shared_ptr<const Rendering> two;
};

/// The cross-fade may span two windows.
bool isOneThenTwo(const std::string& windows) {
    return std::ranges::is_sorted(windows) && std::ranges::count(windows, '1') >= 14 &&
           std::ranges::count(windows, '2') <= 2 && std::ranges::count(windows, '3') >= 12;
}

TEST_F(Changing, TheIRLeavesNoGap) {
    // A busy machine may drop samples; a real fault would occur again.
    std::string windows;
    for (int attempt = 0; attempt < 4 && !isOneThenTwo(windows); ++attempt) {
        const std::vector<float> came = play();
        windows = heard(came, one->samples, two->samples);
        if (!came.empty() && longestGap(std::span(came).subspan(second / 4)) > second / 500)
            windows += " with a gap";
    }
    EXPECT_TRUE(isOneThenTwo(windows)) << windows;
}

TEST_F(SoundServer, ItsEndIsTold) {
    SdlPlayer player;
    ASSERT_EQ(player.start(), "");
    EXPECT_EQ(player.whyStopped(), "");
    server.signal(SIGKILL);
    waitFor([&] { return !player.whyStopped().empty(); });
    EXPECT_EQ(player.whyStopped(), "the sound server or the sound device went away");
    player.stop();
    EXPECT_TRUE(player.start().starts_with("no sound device was found"));
}

} // namespace
} // namespace cabslot::testing
