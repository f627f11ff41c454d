// The whole sound path: through a private sound server and back from its monitor.
#include "tests/audition/SoundServer.h"

#include "audition/sound/PhraseFile.h"
#include "audition/sound/SdlPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>

namespace cabslot::testing {
namespace {

constexpr std::size_t second = 44100;

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

TEST_F(SoundServer, IsPlayedWithoutAGapWhenTheIRChanges) {
    const auto phrase = makePhrase(readPhrase(SHARE_FOLDER "/phrases/driven.wav"));
    Samples one{};
    Samples two{};
    one[0] = two[1] = 0.5;
    std::size_t gap = second;
    // A busy machine may drop samples; a real fault would occur again.
    for (int attempt = 0; attempt < 4 && gap > second / 500; ++attempt) {
        const Recorder recorder(*this);
        SdlPlayer player;
        ASSERT_EQ(player.start(), "");
        player.play(std::make_shared<Rendering>(phrase->render(one, Level::matched)));
        waitFor([&] { return player.played() > second; });
        player.play(std::make_shared<Rendering>(phrase->render(two, Level::matched)));
        waitFor([&] { return player.played() > 2 * second; });
        const std::vector<float> all = recorded();
        const auto first = std::ranges::find_if(all, [](float sample) { return sample != 0; });
        ASSERT_GT(std::distance(first, all.end()), static_cast<std::ptrdiff_t>(second));
        gap = longestGap(std::span(first, all.end()));
    }
    EXPECT_LE(gap, second / 500);
}

TEST_F(SoundServer, ItsEndIsReported) {
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
