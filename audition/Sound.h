// What the sound library offers: phrases that are played through an IR, and a player. A front end
// gets it from loadSound() when somebody wants to listen; until then nothing of it is in memory.
//
// Sound is mono, 44100 Hz, full scale 1.0.
#pragma once

#include "analysis/Samples.h"

#include <memory>
#include <string>
#include <vector>

namespace cabslot {

inline constexpr double soundRate = pointsPerSecond; // Hz

/// How loud a rendering is made.
enum class Level {
    matched, ///< to `matchedLoudness`, so that a louder IR does not seem better
    asItIs,  ///< as the phrase and the IR give it
};

inline constexpr double matchedLoudness = -23; // LUFS, by EBU R128
inline constexpr double highestPeak = -1;      // dBFS; no rendering has a higher one

/// A phrase played through an IR.
struct Rendering {
    std::vector<float> samples; ///< the phrase, then what the IR lets sound on behind its end
    std::size_t loop = 0;       ///< where the phrase starts again, in samples; 0: it does not
    double gain = 0;            ///< dB that were added for the level
    double loudness = quietest; ///< LUFS, the gain included; `quietest` if there is nothing to hear
    bool heldByPeaks = false;   ///< peaks did not allow more gain, so it is quieter than was wanted
};

/// A dry phrase. May be used by one thread at a time.
class Phrase {
public:
    virtual ~Phrase() = default;

    virtual std::size_t size() const = 0; ///< samples
    virtual bool isCut() const = 0;       ///< the file goes on; only its start is used
    virtual Rendering render(const Samples& ir, Level level) const = 0;
};

/// The default output. Calls wait for the sound server, so none belongs on a window's thread. What
/// can fail returns why, or an empty text.
class Player {
public:
    virtual ~Player() = default; ///< ends the sound at once

    virtual std::string whyNoDevice() = 0; ///< looks whether there is an output at all
    virtual std::string start() = 0;       ///< opens the output; it is silent at first

    /// Goes over to `next` within 20 ms, at the same place of the phrase; null: to silence.
    virtual void play(std::shared_ptr<const Rendering> next) = 0;

    virtual void stop() = 0;              ///< fades out and closes the output
    virtual std::string whyStopped() = 0; ///< the output was lost since start(); else empty
    virtual std::size_t
    played() const = 0; ///< samples handed to the output since play() from silence
    virtual unsigned changes() const = 0; ///< how many renderings have begun to sound
};

class SoundLibrary {
public:
    virtual ~SoundLibrary() = default;

    /// Null and `why` (a clause to follow the path and a colon) when the file cannot be used.
    virtual std::unique_ptr<Phrase> openPhrase(const std::string& path, std::string& why) const = 0;
    virtual std::unique_ptr<Player> makePlayer() const = 0;
};

} // namespace cabslot
