#include "prepare/Filters.h"

#include <cmath>
#include <numbers>

namespace cabslot {

namespace {

constexpr std::size_t ringing = 4096; // points: a low cut at 20 Hz has fallen below -100 dB

/// A filter of second order whose two zeros lie at one place: b (1, zero * 2, 1) / (1, a1, a2).
struct Biquad {
    double b, zero, a1, a2;

    void apply(Signal& signal) const {
        signal.resize(signal.size() + ringing);
        double x1 = 0, x2 = 0, y1 = 0, y2 = 0; // the last two inputs and outputs
        for (double& sample : signal) {
            const double output = b * (sample + 2 * zero * x1 + x2) - a1 * y1 - a2 * y2;
            x2 = x1;
            x1 = sample;
            y2 = y1;
            sample = y1 = output;
        }
    }
};

/// By the bilinear transform, with the frequency warped so that -3 dB is at `hertz`.
Biquad butterworth(double rate, double hertz, double zero) {
    const double angle = 2 * std::numbers::pi * hertz / rate;
    const double damping = std::sin(angle) / std::numbers::sqrt2;
    const double scale = 1 + damping;
    return {.b = (1 + zero * -std::cos(angle)) / 2 / scale,
            .zero = zero,
            .a1 = -2 * std::cos(angle) / scale,
            .a2 = (1 - damping) / scale};
}

} // namespace

void cutLows(Signal& signal, double rate, double hertz) {
    butterworth(rate, hertz, -1).apply(signal); // zeros at 0 Hz
}

void cutHighs(Signal& signal, double rate, double hertz) {
    butterworth(rate, hertz, 1).apply(signal); // zeros at half the rate
}

} // namespace cabslot
