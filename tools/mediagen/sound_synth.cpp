#include "tools/mediagen/sound_synth.h"

#include <algorithm>
#include <cmath>

namespace mediagen {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kLn1000 = 6.907755278982137;  // 60 dB of decay

// A small LCG, seeded per sound, so the noise is the same on every run and machine.
class Noise {
public:
    explicit Noise(uint32_t seed) : state_(seed * 2654435761u + 12345u) {}
    double Next() {  // -1 .. 1
        state_ = state_ * 1664525u + 1013904223u;
        return double(state_ >> 8) / double(1u << 23) - 1.0;
    }

private:
    uint32_t state_;
};


// A square as its odd harmonics up to 9 kHz, so it does not alias into a hiss.
double BandLimitedSquare(double phase, double hz) {
    double sum = 0;
    for (int k = 1; k * hz < 9000.0; k += 2) sum += std::sin(k * phase) / k;
    return sum * 4.0 / kPi;
}

// Zero at the first sample, one after `frames`: a raised cosine that cannot click.
double FadeIn(size_t i, size_t frames) {
    if (i >= frames) return 1.0;
    return 0.5 - 0.5 * std::cos(kPi * double(i) / double(frames));
}

// Removes what DC is left, fades both ends and scales the loudest sample to `peakDb`.
void Finish(Sound& sound, double attack, double peakDb) {
    const size_t frames = sound.Frames(), channels = size_t(sound.channels);
    for (size_t c = 0; c < channels; ++c) {
        double mean = 0;
        for (size_t i = 0; i < frames; ++i) mean += sound.samples[i * channels + c];
        mean /= double(std::max<size_t>(frames, 1));
        for (size_t i = 0; i < frames; ++i) sound.samples[i * channels + c] -= float(mean);
    }
    const size_t in = std::max<size_t>(2, size_t(attack * sound.rate));
    const size_t out = std::min(frames / 4, size_t(0.01 * sound.rate));
    for (size_t i = 0; i < frames; ++i) {
        const double gain = FadeIn(i, in) * FadeIn(frames - 1 - i, out);
        for (size_t c = 0; c < channels; ++c) sound.samples[i * channels + c] *= float(gain);
    }
    float loudest = 0;
    for (float s : sound.samples) loudest = std::max(loudest, std::abs(s));
    if (loudest == 0) return;
    const float scale = float(std::pow(10.0, peakDb / 20.0) / loudest);
    for (float& s : sound.samples) s *= scale;
}

Sound Blank(const SoundSource& source, size_t frames) {
    Sound sound;
    sound.rate = source.rate;
    sound.channels = source.channels;
    sound.samples.assign(frames * size_t(source.channels), 0.0f);
    return sound;
}

Sound Hit(const SoundSource& source) {
    const size_t frames = size_t(std::lround(source.length * source.rate));
    Sound sound = Blank(source, frames);
    const double dt = 1.0 / source.rate;
    std::vector<double> mono(frames, 0.0);
    // Partials all starting in phase would make one spike that the normalising then takes
    // as the peak, leaving the ring too quiet; the fade-in hides the random start.
    Noise phases(source.seed + 1);
    for (const SoundPartial& partial : source.partials) {
        const double step = 2 * kPi * partial.frequency * dt, fall = std::exp(-kLn1000 * dt / partial.decay);
        const double start = kPi * (phases.Next() + 1);
        double envelope = partial.level;
        for (size_t i = 0; i < frames; ++i, envelope *= fall) {
            const double phase = std::fmod(start + step * double(i), 2 * kPi);
            mono[i] += envelope * (partial.square ? BandLimitedSquare(phase, partial.frequency) : std::sin(phase));
        }
    }
    if (source.noiseLevel > 0) {
        // Differenced noise: a bright tick with nothing below a few kHz to muddy the hit.
        Noise noise(source.seed);
        const double fall = std::exp(-kLn1000 * dt / source.noiseDecay);
        double envelope = source.noiseLevel, last = 0;
        for (size_t i = 0; i < frames; ++i, envelope *= fall) {
            const double white = noise.Next();
            mono[i] += envelope * 0.5 * (white - last);
            last = white;
        }
    }
    for (size_t i = 0; i < frames; ++i)
        for (int c = 0; c < source.channels; ++c) sound.samples[i * size_t(source.channels) + size_t(c)] = float(mono[i]);
    Finish(sound, source.attack, source.peak);
    return sound;
}

// A two-pole state-variable filter (trapezoidal, so it stays stable as the band sweeps).
class BandPass {
public:
    double Run(double in, double hz, double q, double rate) {
        const double g = std::tan(kPi * std::min(hz, rate * 0.45) / rate), k = 1.0 / q;
        const double a1 = 1.0 / (1.0 + g * (g + k)), a2 = g * a1;
        const double v1 = a1 * ic1_ + a2 * (in - ic2_);
        const double v2 = ic2_ + g * v1;
        ic1_ = 2 * v1 - ic1_;
        ic2_ = 2 * v2 - ic2_;
        return v1;
    }

private:
    double ic1_ = 0, ic2_ = 0;
};

Sound Whoosh(const SoundSource& source) {
    const size_t frames = size_t(std::lround(source.length * source.rate));
    Sound sound = Blank(source, frames);
    Noise noise(source.seed);
    BandPass band, second;
    for (size_t i = 0; i < frames; ++i) {
        const double t = double(i) / double(frames);
        // Up and down in pitch along log frequency, with the loudness following the band.
        const bool rising = t < source.top;
        const double u = rising ? t / source.top : (t - source.top) / (1 - source.top);
        const double from = rising ? source.bandStart : source.bandTop, to = rising ? source.bandTop : source.bandEnd;
        const double shape = rising ? std::sin(0.5 * kPi * u) : 1 - std::cos(0.5 * kPi * u);
        const double hz = from * std::pow(to / from, shape);
        const double loud = rising ? std::pow(std::sin(0.5 * kPi * u), 2) : std::pow(std::cos(0.5 * kPi * u), 2);
        const double x = second.Run(band.Run(noise.Next(), hz, source.q, source.rate), hz, source.q, source.rate);
        const double value = loud * x;
        if (source.channels == 1) {
            sound.samples[i] = float(value);
        } else {
            const double pan = source.panFrom + (source.panTo - source.panFrom) * t;
            const double angle = (pan + 1) * kPi / 4;
            sound.samples[2 * i] = float(value * std::cos(angle));
            sound.samples[2 * i + 1] = float(value * std::sin(angle));
        }
    }
    Finish(sound, source.attack, source.peak);
    return sound;
}

}  // namespace

// In music_synth.cpp.
Sound SynthesizeMusic(const SoundSource& source);

Sound SynthesizeSound(const SoundSource& source) {
    switch (source.kind) {
        case SoundSource::Kind::Hit: return Hit(source);
        case SoundSource::Kind::Whoosh: return Whoosh(source);
        case SoundSource::Kind::Music: return SynthesizeMusic(source);
    }
    return {};
}

}  // namespace mediagen
