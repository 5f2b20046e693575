// The music: a pad of detuned saws through a soft low-pass, a bass line and an arpeggio with a
// ping-pong echo, over a loop of whole bars.
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "tools/mediagen/sound_synth.h"

namespace mediagen {

namespace {

constexpr double kPi = 3.14159265358979323846;

double NoteHz(double midi) { return 440.0 * std::pow(2.0, (midi - 69.0) / 12.0); }

// Smooths the saw's jump over one sample either side, which keeps its aliasing down.
double PolyBlep(double t, double dt) {
    if (t < dt) {
        t /= dt;
        return t + t - t * t - 1;
    }
    if (t > 1 - dt) {
        t = (t - 1) / dt;
        return t * t + t + t + 1;
    }
    return 0;
}

// The loop being mixed. Notes that run past the end wrap round to the start, which is what
// makes the loop seamless.
class Loop {
public:
    explicit Loop(size_t frames) : left(frames, 0.0), right(frames, 0.0) {}
    void Add(size_t at, double l, double r) {
        at %= left.size();
        left[at] += l;
        right[at] += r;
    }
    size_t Frames() const { return left.size(); }

    std::vector<double> left, right;
};

// Linear attack, hold, then an exponential release to -60 dB.
double Envelope(double t, double attack, double hold, double release) {
    if (t < attack) return t / attack;
    if (t < hold) return 1.0;
    return std::exp(-6.9 * (t - hold) / release);
}

uint32_t NextRandom(uint32_t& state) {
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

struct Timing {
    double rate;
    double beatFrames;
    size_t Beat(double beat) const { return size_t(std::llround(beat * beatFrames)); }
};

void Pad(const SoundSource& s, const Timing& time, Loop& loop, uint32_t& random) {
    const double attack = 0.8, release = 1.6;
    const double lowPass = 1 - std::exp(-2 * kPi * s.cutoff / time.rate);
    const int changes = (s.bars + s.barsPerChord - 1) / s.barsPerChord;
    for (int k = 0; k < changes; ++k) {
        const SoundChord& chord = s.chords[size_t(k) % s.chords.size()];
        const size_t start = time.Beat(4.0 * k * s.barsPerChord);
        const double hold = 4.0 * s.barsPerChord * time.beatFrames / time.rate;
        const size_t frames = size_t((hold + release) * time.rate);
        for (int interval : {12, chord.minor ? 15 : 16, 19}) {
            // Three saws a few cents apart, spread left, centre and right.
            double phase[3], step[3];
            for (int v = 0; v < 3; ++v) {
                phase[v] = double(NextRandom(random) % 1000) / 1000.0;
                step[v] = NoteHz(chord.root + interval + (v - 1) * 0.08) / time.rate;
            }
            double l1 = 0, l2 = 0, r1 = 0, r2 = 0;
            for (size_t i = 0; i < frames; ++i) {
                double saw[3];
                for (int v = 0; v < 3; ++v) {
                    saw[v] = 2 * phase[v] - 1 - PolyBlep(phase[v], step[v]);
                    phase[v] += step[v];
                    if (phase[v] >= 1) phase[v] -= 1;
                }
                const double inL = saw[0] + 0.7 * saw[1] + 0.3 * saw[2], inR = 0.3 * saw[0] + 0.7 * saw[1] + saw[2];
                l1 += lowPass * (inL - l1), l2 += lowPass * (l1 - l2);
                r1 += lowPass * (inR - r1), r2 += lowPass * (r1 - r2);
                const double gain = s.pad * 0.2 * Envelope(double(i) / time.rate, attack, hold, release);
                loop.Add(start + i, gain * l2, gain * r2);
            }
        }
    }
}

// Root on the first beat of each bar, root or fifth on the third, an octave under the chord.
void Bass(const SoundSource& s, const Timing& time, Loop& loop) {
    for (int bar = 0; bar < s.bars; ++bar) {
        const SoundChord& chord = s.chords[size_t(bar / s.barsPerChord) % s.chords.size()];
        for (const auto& [beat, beats, interval] : {std::array<double, 3>{0, 2, 0}, {2, 1.5, bar % 2 ? 7.0 : 0.0}}) {
            const double hz = NoteHz(chord.root - 12 + interval);
            const double hold = beats * time.beatFrames / time.rate;
            const size_t start = time.Beat(4.0 * bar + beat), frames = size_t((hold + 0.15) * time.rate);
            for (size_t i = 0; i < frames; ++i) {
                const double t = double(i) / time.rate, phase = 2 * kPi * hz * t;
                const double sag = 0.65 + 0.35 * std::exp(-t / 0.25);
                const double value = s.bass * 0.5 * sag * Envelope(t, 0.01, hold, 0.15) *
                                     (std::sin(phase) + 0.25 * std::sin(2 * phase));
                loop.Add(start + i, value, value);
            }
        }
    }
}

// Eighth notes up and down the chord two octaves over its root, with a dotted-quarter echo
// that bounces between the sides.
void Arpeggio(const SoundSource& s, const Timing& time, Loop& loop, uint32_t& random) {
    Loop dry(loop.Frames());
    for (int bar = 0; bar < s.bars; ++bar) {
        const SoundChord& chord = s.chords[size_t(bar / s.barsPerChord) % s.chords.size()];
        const int third = chord.minor ? 3 : 4;
        const int pattern[8] = {0, 7, 12, 12 + third, 19, 12 + third, 12, 7};
        for (int note = 0; note < 8; ++note) {
            const double hz = NoteHz(chord.root + 12 + pattern[note]);
            const double velocity = 0.75 + 0.25 * double(NextRandom(random) % 1000) / 1000.0;
            const double pan = note % 2 ? 0.35 : -0.35;
            const size_t start = time.Beat(4.0 * bar + 0.5 * note), frames = size_t(0.9 * time.rate);
            for (size_t i = 0; i < frames; ++i) {
                const double t = double(i) / time.rate, phase = 2 * kPi * hz * t;
                const double value = s.arp * 0.3 * velocity * std::min(1.0, t / 0.004) * std::exp(-6.9 * t / 0.8) *
                                     (std::sin(phase) + 0.15 * std::sin(3 * phase));
                dry.Add(start + i, value * (1 - pan), value * (1 + pan));
            }
        }
    }
    const size_t delay = time.Beat(1.5), n = loop.Frames();
    for (size_t i = 0; i < n; ++i) {
        loop.left[i] += dry.left[i] + 0.35 * dry.right[(i + n - delay % n) % n] +
                        0.12 * dry.left[(i + n - 2 * delay % n) % n];
        loop.right[i] += dry.right[i] + 0.35 * dry.left[(i + n - delay % n) % n] +
                         0.12 * dry.right[(i + n - 2 * delay % n) % n];
    }
}

}  // namespace

Sound SynthesizeMusic(const SoundSource& source) {
    const Timing time{double(source.rate), 60.0 * source.rate / source.tempo};
    Loop loop(time.Beat(4.0 * source.bars));
    uint32_t random = source.seed * 2654435761u + 1u;
    Pad(source, time, loop, random);
    Bass(source, time, loop);
    Arpeggio(source, time, loop, random);

    double loudest = 0;
    for (size_t i = 0; i < loop.Frames(); ++i)
        loudest = std::max({loudest, std::abs(loop.left[i]), std::abs(loop.right[i])});
    const double scale = loudest > 0 ? std::pow(10.0, source.peak / 20.0) / loudest : 0;
    Sound sound;
    sound.rate = source.rate;
    sound.channels = source.channels;
    sound.samples.reserve(loop.Frames() * size_t(source.channels));
    for (size_t i = 0; i < loop.Frames(); ++i) {
        if (source.channels == 1) {
            sound.samples.push_back(float(scale * 0.5 * (loop.left[i] + loop.right[i])));
        } else {
            sound.samples.push_back(float(scale * loop.left[i]));
            sound.samples.push_back(float(scale * loop.right[i]));
        }
    }
    return sound;
}

}  // namespace mediagen
