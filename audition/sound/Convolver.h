// A phrase prepared for convolution with one IR after another: the work that depends only on the
// phrase is done once.
#pragma once

#include "analysis/Samples.h"

#include <complex>
#include <span>
#include <vector>

namespace cabslot {

class Convolver {
public:
    explicit Convolver(std::span<const float> phrase);

    std::size_t phraseSize() const { return phraseSize_; }

    /// The whole convolution: 1023 samples longer than the phrase.
    std::vector<float> convolve(const Samples& ir) const;

private:
    using Spectrum = std::vector<std::complex<double>>;

    std::size_t phraseSize_;
    std::vector<Spectrum> pairs_; ///< each of two neighbouring parts of the phrase
};

} // namespace cabslot
