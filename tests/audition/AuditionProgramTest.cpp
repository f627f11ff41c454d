// cabslotctl audition as a user runs it.
#include "tests/audition/SoundServer.h"
#include "tests/support/Programs.h"

#include "audition/sound/Loudness.h"
#include "audition/sound/PhraseFile.h"

#include <algorithm>

namespace cabslot::testing {
namespace {

const std::string demo = SHARE_FOLDER "/examples/Demo 1x12.wav";

class Audition : public ProgramTest {
protected:
    int audition(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "audition");
        return run(std::move(arguments));
    }
};

TEST_F(Audition, WritesTheSound) {
    const std::string sound = folder.path("out.wav");
    EXPECT_EQ(audition({demo, "--out", sound}), 0);
    EXPECT_EQ(err, "");
    const PhraseSamples matched = readPhrase(sound);
    EXPECT_NEAR(loudnessOf(matched.samples), -23, 0.1);
    EXPECT_EQ(matched.samples.size(),
              readPhrase(SHARE_FOLDER "/phrases/clean.wav").samples.size() + 1023);
    EXPECT_EQ(audition({demo, "--out", sound, "--raw-level", "--dry", "driven"}), 2);
    EXPECT_TRUE(errHas("already exists"));
    EXPECT_EQ(audition({demo, "--out", sound, "--raw-level", "--dry", "driven", "--force"}), 0);
    EXPECT_GT(loudnessOf(readPhrase(sound).samples), -21);
}

TEST_F(Audition, WithoutASoundDeviceSaysSo) {
    const WithVariable home("HOME", folder.path());
    const WithVariable server("PULSE_SERVER", "unix:/nowhere");
    EXPECT_EQ(audition({demo}), 2);
    EXPECT_TRUE(err.starts_with("cabslotctl: no sound device was found")) << err;
    EXPECT_EQ(std::ranges::count(err, '\n'), 1) << "libasound has nothing to add";
}

class AuditionOnServer : public SoundServer {};

TEST_F(AuditionOnServer, PlaysUntilItIsInterrupted) {
    Program playing({CABSLOTCTL, "audition", demo}, folder, "ctl");
    const Recorder recorder(*this);
    waitFor([this] { return std::ranges::any_of(recorded(), [](float x) { return x != 0; }); });
    playing.signal(SIGINT);
    EXPECT_EQ(playing.wait(), 130);
    EXPECT_EQ(playing.err(), "");
}

} // namespace
} // namespace cabslot::testing
