// audition FILE: plays a dry guitar phrase through an IR, or writes the result to a WAV file; needs
// no pedal.
#pragma once

#include "audition/Phrases.h"
#include "audition/Sound.h"
#include "cli/Command.h"
#include "cli/OutputFiles.h"

namespace cabslot {

class AuditionCommand final : public Command {
public:
    AuditionCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    ExitStatus sound(const SoundLibrary& library, const Samples& ir,
                     const OutputFiles& outputs) const;
    std::string phrasePath() const;

    CommonOptions& options_;
    std::string file_;
    std::string dry_{shippedPhrases.front().name};
    std::string out_;
    bool rawLevel_ = false;
};

} // namespace cabslot
