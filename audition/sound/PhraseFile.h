// Dry phrases from sound files.
#pragma once

#include "audition/Sound.h"

#include <memory>
#include <string>
#include <vector>

namespace cabslot {

inline constexpr double shortestPhrase = 0.5; // seconds; loudness cannot be told of less
inline constexpr double longestPhrase = 30;   // seconds; of a longer file the start is used

struct PhraseSamples {
    std::vector<float> samples; ///< the mean of all channels, at 44100 Hz; empty when refused
    bool isCut = false;         ///< the file goes on
    std::string whyNot;         ///< a clause to follow the path and a colon
};

/// Reads any format that libsndfile knows, at any rate.
PhraseSamples readPhrase(const std::string& path);

/// A phrase that renders; `samples` are not empty.
std::unique_ptr<Phrase> makePhrase(const PhraseSamples& phrase);

} // namespace cabslot
