#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace mediagen {

// One sine or band-limited square of a struck sound, dying away exponentially.
struct SoundPartial {
    double frequency = 0;  // Hz
    double level = 0;      // relative to the other partials
    double decay = 0;      // seconds to fall by 60 dB
    bool square = false;
};

// A chord of the music: its root (MIDI note number) and whether it is minor.
struct SoundChord {
    int root = 0;
    bool minor = false;
};

// A sound from assets/sounds/NAME.sound (the format is described in assets/README.md).
struct SoundSource {
    enum class Kind { Hit, Whoosh, Music };
    Kind kind = Kind::Hit;
    int channels = 1;
    int rate = 44100;
    double length = 0;       // seconds; music is as long as its bars
    double peak = -1;        // dBFS the loudest sample is scaled to
    double attack = 0.002;   // seconds of fade-in, so the start does not click
    uint32_t seed = 1;

    // hit
    std::vector<SoundPartial> partials;
    double noiseLevel = 0;   // a bright click of noise on top
    double noiseDecay = 0.005;

    // whoosh: noise through a band that rises from bandStart to bandTop at `top` (a share of
    // the length), then falls to bandEnd; loudest where the band is highest
    double bandStart = 300, bandTop = 3000, bandEnd = 500;
    double top = 0.5;
    double q = 1.5;
    double panFrom = 0, panTo = 0;  // -1 left .. 1 right

    // music
    double tempo = 90;  // beats a minute, four to the bar
    int bars = 24;
    int barsPerChord = 2;
    std::vector<SoundChord> chords;
    double pad = 0.5, bass = 0.5, arp = 0.3;  // levels of the three parts
    double cutoff = 900;                      // Hz, the pad's low-pass
};

// name is the file the text came from; a bad source throws MediaError "name:line: reason".
SoundSource ParseSound(std::string_view text, const std::string& name);
SoundSource ReadSound(const std::filesystem::path& path);

}  // namespace mediagen
