#include "audition/sound/Convolver.h"

#include <kissfft.hh>

#include <algorithm>

namespace cabslot {

namespace {

using Complex = std::complex<double>;

// Overlap-save: each part is transformed with the preceding samples that the IR reaches back to.
// Smaller transforms contain more of those, larger ones take longer; this size is the fastest.
constexpr std::size_t transformSize = 8192;
constexpr std::size_t before = irPointCount - 1;
constexpr std::size_t partSize = transformSize - before;

const kissfft<double>& forward() {
    thread_local const kissfft<double> transform(transformSize, false);
    return transform;
}

const kissfft<double>& inverse() {
    thread_local const kissfft<double> transform(transformSize, true);
    return transform;
}

/// Sample `i` from `start` on, which may be before the phrase; zero outside it.
double sampleAt(std::span<const float> phrase, std::size_t start, std::size_t i) {
    const std::size_t position = start + i; // counted from `before` samples before the phrase
    return position < before || position - before >= phrase.size()
               ? 0
               : static_cast<double>(phrase[position - before]);
}

} // namespace

// The IR is real, so two parts share one complex transform: one as the real and the next as the
// imaginary numbers.
Convolver::Convolver(std::span<const float> phrase) : phraseSize_(phrase.size()) {
    const std::size_t outputs = phrase.size() + before;
    std::vector<Complex> parts(transformSize);
    for (std::size_t start = 0; start < outputs; start += 2 * partSize) {
        for (std::size_t i = 0; i < transformSize; ++i)
            parts[i] = {sampleAt(phrase, start, i), sampleAt(phrase, start + partSize, i)};
        forward().transform(parts.data(), pairs_.emplace_back(transformSize).data());
    }
}

std::vector<float> Convolver::convolve(const Samples& ir) const {
    Spectrum points(transformSize);
    std::copy(ir.begin(), ir.end(), points.begin());
    Spectrum response(transformSize);
    forward().transform(points.data(), response.data());
    for (Complex& bin : response)
        bin /= static_cast<double>(transformSize); // the inverse transform does not scale

    std::vector<float> output(2 * partSize * pairs_.size());
    Spectrum product(transformSize);
    Spectrum parts(transformSize);
    for (std::size_t pair = 0; pair < pairs_.size(); ++pair) {
        for (std::size_t i = 0; i < transformSize; ++i)
            product[i] = pairs_[pair][i] * response[i];
        inverse().transform(product.data(), parts.data());
        float* const first = &output[2 * partSize * pair];
        for (std::size_t i = 0; i < partSize; ++i) {
            first[i] = static_cast<float>(parts[before + i].real());
            first[partSize + i] = static_cast<float>(parts[before + i].imag());
        }
    }
    output.resize(phraseSize_ + before);
    return output;
}

} // namespace cabslot
