// Reads dry phrases from sound files.
#pragma once

#include "audition/Sound.h"

#include <memory>
#include <string>
#include <vector>

namespace cabslot {

inline constexpr double shortestPhrase = 0.5; // seconds; too short to measure the loudness

struct PhraseSamples {
    std::vector<float> samples; ///< the mean of all channels, at 44100 Hz; empty if refused
    bool isCut = false;         ///< the file is longer
    std::string whyNot;         ///< why it was refused, to print after the path and a colon
};

/// Reads any format that libsndfile knows by its header, at up to 768 kHz. Takes no more memory
/// than the result, whatever the file claims.
PhraseSamples readPhrase(const std::string& path);

/// A phrase ready for rendering; `samples` must not be empty.
std::unique_ptr<Phrase> makePhrase(const PhraseSamples& phrase);

} // namespace cabslot
