// The sound library's interface: phrases to play through an IR, and a player. A front end gets it
// from loadSound() when the user wants to listen; until then none of it is in memory.
//
// Sound is mono, 44100 Hz, full scale 1.0.
#pragma once

#include "analysis/Samples.h"

#include <memory>
#include <string>
#include <vector>

namespace cabslot {

inline constexpr double soundRate = pointsPerSecond; // Hz

inline constexpr int longestPhrase = 30; // seconds; only the start of a longer file is used

/// The loudness of a rendering.
enum class Level {
    matched, ///< matchedLoudness, so that a louder IR does not seem better
    asItIs,  ///< unchanged
};

inline constexpr double matchedLoudness = -23; // LUFS, by EBU R128
inline constexpr double highestPeak = -1;      // dBFS; the limit for every rendering

/// A phrase played through an IR.
struct Rendering {
    std::vector<float> samples; ///< the phrase, then the IR's decay after its end
    std::size_t loop = 0;       ///< the sample at which the phrase starts again; 0: it does not
    double gain = 0;            ///< dB added for the level
    double loudness = quietest; ///< LUFS, with the gain; `quietest` if silent
    bool heldByPeaks = false;   ///< the peaks allowed no more gain, so it is too quiet
};

/// A dry phrase. Only one thread at a time may use it.
class Phrase {
public:
    virtual ~Phrase() = default;

    virtual std::size_t size() const = 0; ///< samples
    virtual bool isCut() const = 0;       ///< the file is longer; only its start is used
    virtual Rendering render(const Samples& ir, Level level) const = 0;
};

/// The default output. Calls may wait for the sound server, so do not call them on a window's
/// thread. Functions that can fail return the reason, or an empty text.
class Player {
public:
    virtual ~Player() = default; ///< ends the sound at once

    virtual std::string whyNoDevice() = 0; ///< checks whether there is any output
    virtual std::string start() = 0;       ///< opens the output; it is silent at first

    /// Fades to `next` within 20 ms, at the same position in the phrase; null: to silence.
    virtual void play(std::shared_ptr<const Rendering> next) = 0;

    virtual void stop() = 0;              ///< fades out and closes the output
    virtual std::string whyStopped() = 0; ///< the output was lost since start(); else empty
    virtual std::size_t
    played() const = 0; ///< samples handed to the output since play() from silence
    virtual unsigned changes() const = 0; ///< renderings that have begun to play, for scripts/bench
};

class SoundLibrary {
public:
    virtual ~SoundLibrary() = default;

    /// Null if the file cannot be used; `why` is then a clause to print after the path and a colon.
    virtual std::unique_ptr<Phrase> openPhrase(const std::string& path, std::string& why) const = 0;
    virtual std::unique_ptr<Player> makePlayer() const = 0;
};

} // namespace cabslot
