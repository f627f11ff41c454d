// Writes the two dry phrases that ship with the programs: makePhrases CLEAN.wav DRIVEN.wav
//
// A guitar without an amplifier, made by plucked-string synthesis (Karplus and Strong, 1983): a
// burst of noise in a delay line one period long, damped by a low-pass filter. The driven phrase
// then passes a soft clipper, like an amplifier in front of a cabinet.

#include "irfile/WavBytes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <random>
#include <span>
#include <vector>

namespace {

using Signal = std::vector<double>;

constexpr double rate = 44100; // Hz
constexpr double pi = std::numbers::pi;

// Peak levels. A cabinet's IR adds some 13 dB, and the driven phrase is denser: through an IR, both
// are at about -16 LUFS.
constexpr double cleanPeak = 0.14;
constexpr double drivenPeak = 0.035;

/// A string that is struck, then damped.
struct Note {
    double start;  // seconds
    double length; // seconds until it is damped
    int pitch;     // MIDI number; 40 is the lowest open string
    double level;
};

double frequencyOf(int pitch) {
    return 440 * std::exp2((pitch - 69) / 12.0);
}

/// The delay line's initial content: noise, low-passed as by a finger, without the harmonics that a
/// string struck at an eighth of its length lacks.
Signal pluck(std::size_t period, std::mt19937& random) {
    constexpr double softness = 0.55;
    Signal burst(period);
    double before = 0;
    for (double& sample : burst) {
        // Not a standard distribution: their numbers differ between libraries.
        const double noise = static_cast<double>(random()) / 2147483648.0 - 1;
        before += (1 - softness) * (noise - before);
        sample = before;
    }
    Signal struck(period);
    for (std::size_t i = 0; i < period; ++i)
        struck[i] = burst[i] - 0.8 * burst[(i + period - period / 8) % period];
    return struck;
}

void add(const Note& note, Signal& signal, std::mt19937& random) {
    constexpr double ring = 0.9975;   // the gain per period
    constexpr double damped = 0.7;    // the same, palm-muted
    constexpr double averaging = 0.5; // the damping filter's delay in samples
    const double wanted = rate / frequencyOf(note.pitch) - averaging;
    const auto period = static_cast<std::size_t>(wanted - 0.1);
    const double rest = wanted - static_cast<double>(period); // 0.1 to 1.1 samples
    const double tuning = (1 - rest) / (1 + rest);            // of an all-pass filter
    Signal line = pluck(period, random);
    double lineBefore = 0;
    double tunedBefore = 0;
    const auto first = static_cast<std::size_t>(note.start * rate);
    const auto held = static_cast<std::size_t>(note.length * rate);
    for (std::size_t i = 0; first + i < signal.size(); ++i) {
        double& place = line[i % period];
        signal[first + i] += note.level * place;
        const double tuned = tuning * (place - tunedBefore) + lineBefore;
        lineBefore = place;
        tunedBefore = tuned;
        place = (i < held ? ring : damped) * 0.5 * (tuned + tunedBefore);
        tunedBefore = tuned;
    }
}

Signal play(std::span<const Note> notes, double seconds) {
    std::mt19937 random(1); // the same phrase in every build
    Signal signal(static_cast<std::size_t>(seconds * rate), 0.0);
    for (const Note& note : notes)
        add(note, signal, random);
    return signal;
}

/// Strikes one string after another.
void strum(std::vector<Note>& notes, double start, double length, std::span<const int> chord,
           double level) {
    constexpr double betweenStrings = 0.012;
    for (const int pitch : chord) {
        notes.push_back({start, length, pitch, level});
        start += betweenStrings;
    }
}

constexpr double cleanSeconds = 8;
constexpr double drivenSeconds = 7;

/// Two arpeggios, a strummed chord, a short line.
Signal cleanPhrase() {
    constexpr double eighth = 0.25;
    std::vector<Note> notes;
    const int broken[] = {40, 52, 55, 59, 64, 59, 55, 52, 45, 52, 57, 60, 64, 60, 57, 52};
    double time = 0.02;
    for (const int pitch : broken) {
        notes.push_back({time, 3 * eighth, pitch, pitch < 48 ? 0.9 : 0.7});
        time += eighth;
    }
    const int open[] = {43, 47, 50, 55, 59, 67};
    strum(notes, time, 5 * eighth, open, 0.5);
    strum(notes, time + 5 * eighth, eighth, open, 0.35);
    time += 6 * eighth;
    const int line[] = {64, 67, 69, 71, 69, 67};
    for (const int pitch : line) {
        notes.push_back({time, eighth * 0.9, pitch, 0.8});
        time += eighth;
    }
    notes.push_back({time, 2 * eighth, 52, 0.9});
    return play(notes, cleanSeconds);
}

/// Palm-muted low strings, power chords, a held one.
Signal drivenPhrase() {
    constexpr double sixteenth = 0.125;
    std::vector<Note> notes;
    const auto power = [&](double step, double length, int root) {
        const int chord[] = {root, root + 7, root + 12};
        strum(notes, 0.02 + step * sixteenth, length * sixteenth, chord, 0.8);
    };
    const auto muted = [&](double step, int pitch) {
        notes.push_back({0.02 + step * sixteenth, 0.05, pitch, 1.0});
    };
    const int roots[] = {40, 43, 45, 40};
    for (int bar = 0; bar < 4; ++bar) {
        const double step = 10.0 * bar;
        for (const double at : {0.0, 1.0, 3.0, 4.0, 6.0})
            muted(step + at, 40);
        power(step + 2, 0.9, 40);
        power(step + 5, 0.9, roots[bar]);
        power(step + 7, 2.8, roots[bar] + 2);
    }
    power(40, 11, 40);
    return play(notes, drivenSeconds);
}

/// A one-pole low-pass filter, one sample per call.
class LowPass {
public:
    explicit LowPass(double cutoff) : share_(1 - std::exp(-2 * pi * cutoff / rate)) {}
    double operator()(double sample) { return state_ += share_ * (sample - state_); }

private:
    double share_;
    double state_ = 0;
};

/// Cuts the bass before the clipper to keep it tight; clips asymmetrically and removes the
/// resulting DC offset; damps the fizz after the clipper.
void drive(Signal& signal) {
    constexpr double gain = 4;
    constexpr double bias = 0.2;
    LowPass bass(120);
    LowPass constant(20);
    LowPass fizz(6500);
    for (double& sample : signal) {
        const double clipped = std::tanh(gain * (sample - bass(sample)) + bias);
        sample = fizz(clipped - constant(clipped));
    }
}

/// Sets the peak level and fades the end to silence, so that the phrase can be looped.
void finish(Signal& signal, double peakLevel) {
    const auto length = static_cast<std::size_t>(0.15 * rate);
    for (std::size_t i = 0; i < length; ++i)
        signal[signal.size() - 1 - i] *= static_cast<double>(i) / static_cast<double>(length);
    double peak = 0;
    for (const double sample : signal)
        peak = std::max(peak, std::abs(sample));
    for (double& sample : signal)
        sample *= peakLevel / peak;
}

bool write(const char* path, const Signal& signal) {
    const std::vector<float> samples(signal.begin(), signal.end());
    const std::vector<std::uint8_t> bytes = cabslot::wavBytes(samples);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        std::fprintf(stderr, "makePhrases: %s cannot be written\n", path);
    return static_cast<bool>(file);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: makePhrases CLEAN.wav DRIVEN.wav\n");
        return 2;
    }
    Signal clean = cleanPhrase();
    finish(clean, cleanPeak);
    Signal driven = drivenPhrase();
    drive(driven);
    finish(driven, drivenPeak);
    return write(argv[1], clean) && write(argv[2], driven) ? 0 : 1;
}
