// Writes the two IR files that ship with the programs: makeIRs BLANK.wav DEMO.wav
//
// The blank IR is silence; uploading it clears a slot. The demo IR is a made-up guitar cabinet to
// try things out: a few damped resonances and the roll-off of a 12-inch speaker.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

namespace {

using Signal = std::vector<double>;

struct WavFormat {
    unsigned rate; // Hz
    unsigned channels;
    unsigned bits;
};

void append(std::string& bytes, std::uint32_t value, unsigned width) {
    for (unsigned i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

/// A WAV file of `channels` (as many as the format says, of equal length, -1.0 to below 1.0).
std::string wavFile(const WavFormat& format, const std::vector<Signal>& channels) {
    constexpr std::uint32_t formatSize = 16;
    constexpr std::uint32_t headerSize = 36; // everything between the RIFF size and the samples
    const unsigned sampleSize = format.bits / 8;
    const unsigned frameSize = sampleSize * format.channels;
    const auto frames = static_cast<std::uint32_t>(channels.front().size());

    std::string bytes = "RIFF";
    append(bytes, headerSize + frames * frameSize, 4);
    bytes += "WAVEfmt ";
    append(bytes, formatSize, 4);
    append(bytes, 1, 2); // integer samples
    append(bytes, format.channels, 2);
    append(bytes, format.rate, 4);
    append(bytes, format.rate * frameSize, 4);
    append(bytes, frameSize, 2);
    append(bytes, format.bits, 2);
    bytes += "data";
    append(bytes, frames * frameSize, 4);
    const double fullScale = std::ldexp(1.0, static_cast<int>(format.bits) - 1);
    for (std::size_t i = 0; i < frames; ++i)
        for (const Signal& channel : channels)
            append(bytes, static_cast<std::uint32_t>(std::lround(channel[i] * fullScale)),
                   sampleSize);
    return bytes;
}

constexpr double demoRate = 48000;
constexpr std::size_t demoFrames = 2000;

/// A damped sine: one mode of the cabinet.
struct Resonance {
    double frequency; // Hz
    double decay;     // seconds until it has fallen to 1/e
    double level;
};

// The resonances of the box and the cone, the cone's break-up, the presence.
constexpr Resonance modes[] = {{92, 0.0090, 0.07},    {215, 0.0048, 0.13},  {430, 0.0026, -0.14},
                               {890, 0.0016, 0.20},   {1650, 0.0010, 0.40}, {2550, 0.0007, 0.95},
                               {3400, 0.0005, -0.60}, {4300, 0.0004, 0.55}};

/// The sum of all modes, with every frequency multiplied by `detune`.
Signal resonances(double detune) {
    Signal signal(demoFrames, 0.0);
    for (const Resonance& mode : modes)
        for (std::size_t i = 0; i < demoFrames; ++i) {
            const double time = static_cast<double>(i) / demoRate;
            signal[i] += mode.level * std::exp(-time / mode.decay) *
                         std::sin(2 * std::numbers::pi * mode.frequency * detune * time);
        }
    return signal;
}

/// A second-order Butterworth low-pass filter, in place.
void lowPass(Signal& signal, double cutoff) {
    const double k = std::tan(std::numbers::pi * cutoff / demoRate);
    const double norm = 1 / (1 + std::numbers::sqrt2 * k + k * k);
    const double gain = k * k * norm;
    const double feedback1 = 2 * (k * k - 1) * norm;
    const double feedback2 = (1 - std::numbers::sqrt2 * k + k * k) * norm;
    double state1 = 0;
    double state2 = 0;
    for (double& sample : signal) {
        const double out = gain * sample + state1;
        state1 = 2 * gain * sample - feedback1 * out + state2;
        state2 = gain * sample - feedback2 * out;
        sample = out;
    }
}

/// Fades the last tenth out, so that the end does not click.
void fadeOut(Signal& signal) {
    const std::size_t length = signal.size() / 10;
    for (std::size_t i = 0; i < length; ++i)
        signal[signal.size() - 1 - i] *= static_cast<double>(i) / static_cast<double>(length);
}

std::vector<Signal> demoCabinet() {
    constexpr double rollOff = 5500;                    // Hz
    const double peakLevel = std::pow(10.0, -1.0 / 20); // -1 dBFS
    std::vector<Signal> channels = {resonances(1.0), resonances(1.03)};
    double peak = 0;
    for (Signal& channel : channels) {
        lowPass(channel, rollOff);
        lowPass(channel, rollOff);
        fadeOut(channel);
        for (const double sample : channel)
            peak = std::max(peak, std::abs(sample));
    }
    for (Signal& channel : channels)
        for (double& sample : channel)
            sample *= peakLevel / peak;
    return channels;
}

bool write(const char* path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        std::fprintf(stderr, "makeIRs: %s cannot be written\n", path);
    return static_cast<bool>(file);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: makeIRs BLANK.wav DEMO.wav\n");
        return 2;
    }
    const Signal silence(1024, 0.0);
    const bool written =
        write(argv[1], wavFile({44100, 1, 16}, {silence})) &&
        write(argv[2], wavFile({static_cast<unsigned>(demoRate), 2, 24}, demoCabinet()));
    return written ? 0 : 1;
}
