// Improves an IR file before it is loaded: resamples it with a proper filter, cuts lows and highs,
// removes the silence before its onset, fades the end if it is cut, and sets a good level.
//
// The result is a WAV file in memory of at most 1024 frames at 44.1 kHz, mono, 24 bits, which the
// plain conversion passes bit for bit. Any thread; changes nothing that is sent.
#pragma once

#include "analysis/Samples.h"
#include "base/StopCheck.h"
#include "irfile/IRFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

inline constexpr double usualFade = 2;      ///< ms
inline constexpr double usualPeak = -0.3;   ///< dBFS; the limit for the peak and loudness goals
inline constexpr double longestFade = 20;   ///< ms
inline constexpr double quietestGoal = -70; ///< LUFS

// The frequencies that can be cut at, Hz.
inline constexpr double lowestLowCut = 20;
inline constexpr double highestLowCut = 1000;
inline constexpr double lowestHighCut = 1000;
inline constexpr double highestHighCut = 20000;

enum class Channel {
    first,
    mean, ///< of all channels
};

enum class LevelGoal {
    keep,     ///< unchanged unless it would clip
    peak,     ///< the highest point at usualPeak
    loudness, ///< PrepareOptions::loudness, as far as usualPeak allows
};

/// Each step can be switched off. With all of them off, and the first channel, the result is
/// bit-identical to the plain conversion.
struct PrepareOptions {
    Channel channel = Channel::first;
    bool resample = true;      ///< off: plain linear interpolation, as the last step
    double lowCut = 0;         ///< Hz, 12 dB per octave; 0: none
    double highCut = 0;        ///< Hz, 12 dB per octave; 0: none
    bool trim = true;          ///< removes what comes before the onset
    bool minimumPhase = false; ///< same magnitude response, with the energy as early as possible
    double fade = usualFade;   ///< ms at the end of an IR that is cut; 0: none
    LevelGoal level = LevelGoal::peak;
    double loudness = -30; ///< LUFS: of pink noise at -20 dBFS (RMS) played through the IR

    /// All steps off.
    static PrepareOptions nothing();
    bool changesNothing() const;
    bool operator==(const PrepareOptions&) const = default;
};

struct PreparedIR {
    std::string whyRefused;         ///< a clause for the user; not empty: the rest is
    IR ir{};                        ///< what the pedal gets, under the file's name
    Block plain{};                  ///< what the pedal would get without preparing
    std::vector<std::uint8_t> wav;  ///< the prepared IR as a file
    std::vector<std::string> steps; ///< one sentence per step that changed something
};

/// Prepares the file at `path`. Refuses what the plain conversion refuses. Passes a factory IR
/// unchanged. Uses only the first MiB of a long file. Takes some milliseconds; minimum phase takes
/// up to a second, and gives up soon after `stop` returns true.
PreparedIR prepareFile(const std::string& path, const PrepareOptions& options,
                       const StopCheck& stop = {});

/// The same for a file that was read and not refused.
PreparedIR prepare(const ReadIR& read, const PrepareOptions& options, const StopCheck& stop = {});

} // namespace cabslot
