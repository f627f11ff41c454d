// A phrase that can be convolved with one IR after the other: what of the work depends on the
// phrase alone is done once.
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

    /// The whole convolution: as many samples as the phrase has, and 1023 more.
    std::vector<float> convolve(const Samples& ir) const;

private:
    using Spectrum = std::vector<std::complex<double>>;

    std::size_t phraseSize_;
    std::vector<Spectrum> pairs_; ///< of two neighbouring parts of the phrase each
};

} // namespace cabslot
