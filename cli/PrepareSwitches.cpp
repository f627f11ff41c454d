#include "cli/PrepareSwitches.h"

namespace cabslot {

namespace {

std::string whyNoLevel(const std::string& level) {
    const auto number = numberIn(level);
    if (level == "keep" || level == "peak" || (number && *number >= quietestGoal && *number <= 0))
        return {};
    return level + " is not a level; use keep, peak or a loudness of -70 to 0 (LUFS)";
}

} // namespace

void PrepareSwitches::addTo(Arguments& arguments) {
    arguments.add({.name = "--channel",
                   .help = "first, or the mean of all; first if not given",
                   .reader = oneOf(channel_, {"first", "mean"}),
                   .type = "CHANNEL"});
    arguments.addFlag("--no-resample", noResample_,
                      "Resample with the plain interpolation of load");
    arguments.add({.name = "--low-cut",
                   .help = "Remove lows below this, 20 to 1000 Hz, by 12 dB per octave",
                   .reader = within(lowCut_, lowestLowCut, highestLowCut),
                   .type = "HZ"});
    arguments.add({.name = "--high-cut",
                   .help = "Remove highs above this, 1000 to 20000 Hz, by 12 dB per octave",
                   .reader = within(highCut_, lowestHighCut, highestHighCut),
                   .type = "HZ"});
    arguments.addFlag("--no-trim", noTrim_, "Keep what comes before the onset");
    arguments.addFlag("--minimum-phase", minimumPhase_,
                      "Same response, with the energy as early as possible");
    arguments.add({.name = "--fade",
                   .help = "Fade out the end of an IR that is cut, 0 to 20 ms; 2 if not given",
                   .reader = within(fade_, 0, longestFade),
                   .type = "MS"});
    arguments.add(
        {.name = "--level",
         .help = "keep, peak (-0.3 dBFS) or a loudness in LUFS, such as -18; peak if not given",
         .reader = into(level_, whyNoLevel),
         .type = "LEVEL"});
}

PrepareOptions PrepareSwitches::options() const {
    PrepareOptions options{.channel = channel_ == "mean" ? Channel::mean : Channel::first,
                           .resample = !noResample_,
                           .lowCut = lowCut_,
                           .highCut = highCut_,
                           .trim = !noTrim_,
                           .minimumPhase = minimumPhase_,
                           .fade = fade_};
    if (level_ == "keep") {
        options.level = LevelGoal::keep;
    } else if (const auto loudness = numberIn(level_)) {
        options.level = LevelGoal::loudness;
        options.loudness = *loudness;
    }
    return options;
}

bool PrepareSwitches::given() const {
    return options() != PrepareOptions();
}

} // namespace cabslot
