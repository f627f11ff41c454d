#include "cli/AuditionCommand.h"

#include "analysis/Words.h"
#include "audition/LoadSound.h"
#include "cli/Console.h"
#include "cli/Playback.h"
#include "irfile/IRFile.h"
#include "irfile/WavBytes.h"
#include "platform/BundlePath.h"

#include <utility>

namespace cabslot {

namespace {

/// "clean, driven, "
std::string shippedNames() {
    std::string names;
    for (const ShippedPhrase& phrase : shippedPhrases)
        names.append(phrase.name).append(", ");
    return names;
}

std::string lengthText(const Rendering& rendering) {
    return fixedText(static_cast<double>(rendering.samples.size()) / soundRate, 1) + " s";
}

std::string loudnessText(const Rendering& rendering) {
    if (rendering.loudness == quietest)
        return "nothing to hear";
    return fixedText(rendering.loudness, 1) + " LUFS";
}

void complainAboutLevel(Level level) {
    complain(level == Level::matched ? "its peaks keep it from being as loud as other files"
                                     : "it was made quieter: its peaks would be beyond full scale");
}

ExitStatus play(std::unique_ptr<Player> player, Rendering rendering) {
    ProgressLine progress;
    const std::string end = " of " + lengthText(rendering) + ", " + loudnessText(rendering);
    Playback playback(std::move(player), std::move(rendering));
    while (playback.wait()) {
        if (interrupted())
            return ExitStatus::interrupted;
        progress.show("Playing, " + fixedText(playback.seconds(), 1) + end);
    }
    if (playback.whyNot().empty())
        return ExitStatus::done;
    complain(playback.whyNot());
    return ExitStatus::wrongUsage;
}

} // namespace

AuditionCommand::AuditionCommand(Arguments& program, CommonOptions& options)
    : Command(program, "audition",
              "Play a dry guitar phrase through a file, at the same loudness as any other file; "
              "needs no pedal"),
      options_(options) {
    addFile("FILE", file_, "A WAV or factory IR file");
    arguments().add(
        {.name = "--dry",
         .help = "The phrase: " + shippedNames() + "or a sound file; " + dry_ + " if not given",
         .reader = into(dry_),
         .type = "PHRASE"});
    arguments().add({.name = "--out",
                     .help = "Write the sound to this WAV file instead of playing it",
                     .reader = into(out_),
                     .type = "OUT"});
    addForce(options);
    arguments().addFlag("--raw-level", rawLevel_,
                        "Leave it as loud as it is, unless its peaks would be beyond full scale");
}

std::string AuditionCommand::phrasePath() const {
    return isShippedPhrase(dry_) ? shippedPhrasePath(bundlePath(), dry_) : dry_;
}

ExitStatus AuditionCommand::run() {
    OutputFiles outputs(options_.force);
    outputs.addInput(file_);
    outputs.addInput(phrasePath());
    outputs.add(out_);
    if (!outputs.mayWrite())
        return ExitStatus::wrongUsage;
    const ReadIR read = readIR(file_, interrupted);
    if (!read) {
        complain(file_ + ": " + read.whyRefused);
        return interrupted() ? ExitStatus::interrupted : ExitStatus::fileRefused;
    }
    if (peakOf(samplesOf(read.ir.block)) == 0) {
        complain(file_ +
                 ": its first 23 ms, all that the pedal takes, are silent: there is nothing to "
                 "hear; prepare removes silence before the sound");
        return ExitStatus::fileRefused;
    }
    std::string why;
    const SoundLibrary* const library = loadSound(installPrefix(), why);
    if (library == nullptr) {
        complain(why);
        return ExitStatus::wrongUsage;
    }
    return sound(*library, samplesOf(read.ir.block), outputs);
}

ExitStatus AuditionCommand::sound(const SoundLibrary& library, const Samples& ir,
                                  const OutputFiles& outputs) const {
    std::string why;
    const std::unique_ptr<Phrase> phrase = library.openPhrase(phrasePath(), why);
    if (!phrase) {
        complain(phrasePath() + ": " + why);
        return ExitStatus::fileRefused;
    }
    const Level level = rawLevel_ ? Level::asItIs : Level::matched;
    Rendering rendering = phrase->render(ir, level);
    rendering.loop = 0; // once
    if (rendering.loudness == quietest)
        complain(phrasePath() + ": it is too quiet, so there is nothing to hear");
    if (rendering.heldByPeaks)
        complainAboutLevel(level);
    if (phrase->isCut())
        complain(phrasePath() + ": it is long; the first " + std::to_string(longestPhrase) +
                 " seconds are used");
    if (out_.empty())
        return play(library.makePlayer(), std::move(rendering));
    return outputs.writeAndReport({{out_, wavBytes(rendering.samples)}});
}

} // namespace cabslot
