#include "blend/Shift.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace cabslot {

namespace {

constexpr auto reach = static_cast<std::ptrdiff_t>(shiftReach);
constexpr double kaiserShape = 9;   // 90 dB of attenuation beyond 26 kHz, the image of 18 kHz
constexpr double negligible = 1e-8; // of the energy; -80 dB

using Kernel = std::array<double, 2 * shiftReach>;

/// The modified Bessel function of order 0, by its series.
double bessel(double x) {
    double term = 1;
    double sum = 1;
    for (int k = 1; term > 1e-12 * sum; ++k) {
        term *= x * x / 4 / (k * k);
        sum += term;
    }
    return sum;
}

/// A sinc under a Kaiser window, delayed by `fraction` (0 to 1); its entry `reach` - 1 is the point
/// itself.
Kernel kernelOf(double fraction) {
    Kernel kernel;
    for (std::size_t i = 0; i < kernel.size(); ++i) {
        const double distance = static_cast<double>(i) - (reach - 1) - fraction;
        const double angle = std::numbers::pi * distance;
        const double sinc = angle == 0 ? 1 : std::sin(angle) / angle;
        const double place = distance / reach;
        kernel[i] = sinc * bessel(kaiserShape * std::sqrt(std::max(0.0, 1 - place * place))) /
                    bessel(kaiserShape);
    }
    const double gain = std::accumulate(kernel.begin(), kernel.end(), 0.0);
    for (double& entry : kernel)
        entry /= gain;
    return kernel;
}

/// The place of the first point with which the energy so far is no longer negligible.
std::ptrdiff_t beginningOf(const ShiftedIR& ir) {
    const double limit = negligible * energyOf(ir.points);
    double sum = 0;
    const auto first = std::ranges::find_if(ir.points, [&](double point) {
        sum += point * point;
        return sum > limit;
    });
    return ir.first + (first - ir.points.begin());
}

} // namespace

double ShiftedIR::at(std::ptrdiff_t place) const {
    const std::ptrdiff_t index = place - first;
    return index >= 0 && index < std::ssize(points) ? points[static_cast<std::size_t>(index)] : 0;
}

ShiftedIR shifted(const Samples& samples, double points) {
    const double whole = std::floor(points);
    const auto places = static_cast<std::ptrdiff_t>(whole);
    if (points == whole)
        return {{samples.begin(), samples.end()}, places};
    const Kernel kernel = kernelOf(points - whole);
    ShiftedIR result{std::vector<double>(samples.size() + kernel.size() - 1), places - (reach - 1)};
    for (std::size_t i = 0; i < samples.size(); ++i) {
        for (std::size_t k = 0; k < kernel.size(); ++k)
            result.points[i + k] += samples[i] * kernel[k];
    }
    return result;
}

std::size_t delayToKeepOnset(const ShiftedIR& ir) {
    const std::ptrdiff_t onset = ir.first + static_cast<std::ptrdiff_t>(onsetOf(ir.points));
    const std::ptrdiff_t needed = std::max(onset - reach, beginningOf(ir));
    return needed < 0 ? static_cast<std::size_t>(-needed) : 0;
}

double shareOutside(const ShiftedIR& ir, std::size_t delay) {
    const double all = energyOf(ir.points);
    const std::ptrdiff_t from = ir.first + static_cast<std::ptrdiff_t>(delay);
    double outside = 0;
    for (std::size_t i = 0; i < ir.points.size(); ++i) {
        const std::ptrdiff_t place = from + static_cast<std::ptrdiff_t>(i);
        if (place < 0 || place >= std::ptrdiff_t{irPointCount})
            outside += ir.points[i] * ir.points[i];
    }
    return all > 0 ? outside / all : 0;
}

} // namespace cabslot
