// The module cabslot-sound's only exported function.
#include "audition/sound/PhraseFile.h"
#include "audition/sound/SdlPlayer.h"

#include <utility>

namespace cabslot {

namespace {

class OurSoundLibrary final : public SoundLibrary {
public:
    std::unique_ptr<Phrase> openPhrase(const std::string& path, std::string& why) const override {
        PhraseSamples phrase = readPhrase(path);
        why = std::move(phrase.whyNot);
        return phrase.samples.empty() ? nullptr : makePhrase(phrase);
    }
    std::unique_ptr<Player> makePlayer() const override { return std::make_unique<SdlPlayer>(); }
};

} // namespace

} // namespace cabslot

extern "C" cabslot::SoundLibrary* cabslotSoundLibrary() {
    static cabslot::OurSoundLibrary library;
    return &library;
}
