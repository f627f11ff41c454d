// Makes the best of an IR file before it is loaded: resampled with a proper filter, without the
// silence before its onset, faded where it is cut, at a good level.
//
// The result is a WAV file in memory of at most 1024 frames at 44.1 kHz, mono, 24 bits, which the
// plain conversion passes bit for bit. Any thread; nothing that is sent is touched.
#pragma once

#include "analysis/Samples.h"
#include "irfile/QNIRFile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cabslot {

inline constexpr double usualFade = 2;      ///< ms
inline constexpr double usualPeak = -0.3;   ///< dBFS; no prepared IR has a higher one
inline constexpr double longestFade = 20;   ///< ms
inline constexpr double quietestGoal = -70; ///< LUFS

enum class Channel {
    first,
    mean, ///< of all channels
};

enum class LevelGoal {
    keep,     ///< as it is, unless it would clip
    peak,     ///< the highest point at usualPeak
    loudness, ///< PrepareOptions::loudness, as far as the peak allows
};

/// Each step can be switched off. With all of them off, and the first channel, the result is what
/// the plain conversion makes of the file, to the bit.
struct PrepareOptions {
    Channel channel = Channel::first;
    bool resample = true;      ///< off: the plain linear interpolation
    bool trim = true;          ///< what lies before the onset goes
    bool minimumPhase = false; ///< same response, with the energy as early as it can be
    double fade = usualFade;   ///< ms at the end of an IR that is cut; 0: none
    LevelGoal level = LevelGoal::peak;
    double loudness = -30; ///< LUFS: of pink noise at -20 dBFS (RMS) played through the IR

    /// As with everything off.
    static PrepareOptions nothing();
    bool changesNothing() const;
};

struct PreparedIR {
    bool refused = false;           ///< the file cannot be loaded; the rest is empty
    std::string whyRefused;         ///< a clause
    std::vector<std::uint8_t> wav;  ///< the file's bytes
    Block block{};                  ///< what the pedal gets
    Block plain{};                  ///< what it would get of the file as it is
    std::vector<std::string> steps; ///< a sentence on each step that changed something
};

/// Prepares the file at `path`. Refuses what the plain conversion refuses. A factory IR is passed
/// as it is. Of a long file only the first MiB is looked at. Takes some milliseconds.
PreparedIR prepareFile(const std::string& path, const PrepareOptions& options);

/// The same of a file that is open and its block.
PreparedIR prepareFile(const QNIRFile& file, const Block& plain, const PrepareOptions& options);

} // namespace cabslot
