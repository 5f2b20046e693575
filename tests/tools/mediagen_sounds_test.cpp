// The generated sounds, read back from their WAV bytes the way a player would hear them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/sound_source.h"
#include "tools/mediagen/sound_synth.h"
#include "tools/mediagen/wav_writer.h"

namespace fs = std::filesystem;
using namespace mediagen;

namespace {

const fs::path kSounds = fs::path(VELLORAN_SOURCE_DIR) / "assets" / "sounds";

uint32_t Little(const std::vector<uint8_t>& b, size_t at, int bytes) {
    uint32_t value = 0;
    for (int i = 0; i < bytes; ++i) value |= uint32_t(b[at + size_t(i)]) << (8 * i);
    return value;
}

// A WAV file as written, checked field by field, its samples scaled to -1..1.
struct Wav {
    int channels = 0, rate = 0, bits = 0;
    std::vector<double> samples;

    size_t Frames() const { return samples.size() / size_t(channels); }
    double At(size_t frame, int channel = 0) const { return samples[frame * size_t(channels) + size_t(channel)]; }
};

Wav Decode(const std::vector<uint8_t>& b) {
    Wav wav;
    EXPECT_GE(b.size(), 44u);
    if (b.size() < 44) return wav;
    EXPECT_EQ(std::string(b.begin(), b.begin() + 4), "RIFF");
    EXPECT_EQ(Little(b, 4, 4), b.size() - 8);
    EXPECT_EQ(std::string(b.begin() + 8, b.begin() + 16), "WAVEfmt ");
    EXPECT_EQ(Little(b, 16, 4), 16u);
    EXPECT_EQ(Little(b, 20, 2), 1u);
    wav.channels = int(Little(b, 22, 2));
    wav.rate = int(Little(b, 24, 4));
    wav.bits = int(Little(b, 34, 2));
    EXPECT_EQ(Little(b, 28, 4), uint32_t(wav.rate * wav.channels * 2));
    EXPECT_EQ(Little(b, 32, 2), uint32_t(wav.channels * 2));
    EXPECT_EQ(std::string(b.begin() + 36, b.begin() + 40), "data");
    EXPECT_EQ(Little(b, 40, 4), b.size() - 44);
    for (size_t at = 44; at + 1 < b.size(); at += 2) wav.samples.push_back(int16_t(Little(b, at, 2)) / 32768.0);
    return wav;
}

Wav Render(const std::string& name) { return Decode(EncodeWav(SynthesizeSound(ReadSound(kSounds / (name + ".sound"))))); }

double Peak(const Wav& wav) {
    double peak = 0;
    for (double s : wav.samples) peak = std::max(peak, std::abs(s));
    return peak;
}

double Rms(const Wav& wav, size_t from, size_t to) {
    double sum = 0;
    for (size_t i = from * size_t(wav.channels); i < to * size_t(wav.channels); ++i) sum += wav.samples[i] * wav.samples[i];
    return std::sqrt(sum / double((to - from) * size_t(wav.channels)));
}

// The loudest 50 ms of a hit, which is how loud it sounds.
double LoudestRms(const Wav& wav) {
    const size_t window = size_t(wav.rate / 20);
    double loudest = 0;
    for (size_t from = 0; from + window <= wav.Frames(); from += window / 4) loudest = std::max(loudest, Rms(wav, from, from + window));
    return loudest;
}

std::string ErrorOf(const std::string& text) {
    try {
        ParseSound(text, "bad.sound");
    } catch (const MediaError& e) {
        return e.what();
    }
    return "no error";
}

TEST(MediagenSounds, HitsAreShortMonoClicklessAndPeakJustUnderFullScale) {
    struct Expected {
        const char* name;
        double least, most;  // seconds
    };
    for (const Expected& hit : {Expected{"claves", 0.08, 0.3}, Expected{"cowbell", 0.3, 0.8},
                                Expected{"oriental_gong", 2.5, 4.0}}) {
        SCOPED_TRACE(hit.name);
        const Wav wav = Render(hit.name);
        ASSERT_EQ(wav.channels, 1);
        EXPECT_EQ(wav.rate, 44100);
        EXPECT_EQ(wav.bits, 16);
        const double seconds = double(wav.Frames()) / wav.rate;
        EXPECT_GE(seconds, hit.least);
        EXPECT_LE(seconds, hit.most);
        EXPECT_NEAR(20 * std::log10(Peak(wav)), -1.0, 0.2);
        EXPECT_LT(std::abs(wav.At(0)), 0.001);
        EXPECT_LT(std::abs(wav.At(wav.Frames() - 1)), 0.001);
        EXPECT_LT(Rms(wav, wav.Frames() * 9 / 10, wav.Frames()), 0.02) << "rings on past its end";
        double mean = 0;
        for (double s : wav.samples) mean += s;
        EXPECT_LT(std::abs(mean / double(wav.samples.size())), 0.002) << "DC";
    }
    // The claves die fast, the gong rings: the first 80 ms hold most of the claves' energy.
    const Wav claves = Render("claves");
    EXPECT_LT(Rms(claves, size_t(0.08 * 44100), claves.Frames()), 0.1 * Rms(claves, 0, size_t(0.08 * 44100)));
    const Wav gong = Render("oriental_gong");
    EXPECT_GT(Rms(gong, 44100, 2 * 44100), 0.01) << "the gong should still ring after a second";
}

TEST(MediagenSounds, TheWhooshRisesAndFallsInLoudness) {
    const Wav comet = Render("comet_1");
    ASSERT_GE(comet.channels, 1);
    const double seconds = double(comet.Frames()) / comet.rate;
    EXPECT_NEAR(seconds, 1.2, 0.1);
    EXPECT_NEAR(20 * std::log10(Peak(comet)), -1.0, 0.2);
    const size_t tenth = comet.Frames() / 10;
    const double middle = Rms(comet, 4 * tenth, 6 * tenth);
    EXPECT_GT(middle, 3 * Rms(comet, 0, tenth));
    EXPECT_GT(middle, 3 * Rms(comet, 9 * tenth, comet.Frames()));
}

TEST(MediagenSounds, TheMusicLoopsWithoutAClickUnderTheEffects) {
    const Wav music = Render("audiotrack1");
    ASSERT_EQ(music.channels, 2);
    EXPECT_EQ(music.bits, 16);
    EXPECT_GE(double(music.Frames()) / music.rate, 60.0);
    EXPECT_NEAR(20 * std::log10(Peak(music)), -6.0, 0.5);

    for (int channel = 0; channel < 2; ++channel) {
        std::vector<double> steps;
        for (size_t i = 1; i < music.Frames(); ++i) steps.push_back(std::abs(music.At(i, channel) - music.At(i - 1, channel)));
        std::sort(steps.begin(), steps.end());
        const double typical = steps[steps.size() * 99 / 100];
        const double wrap = std::abs(music.At(0, channel) - music.At(music.Frames() - 1, channel));
        EXPECT_LE(wrap, typical) << "channel " << channel;
    }

    // It plays under the effects: at least 3 dB quieter than any of them sounds.
    const double rms = Rms(music, 0, music.Frames());
    EXPECT_GT(rms, 0.02) << "silent";
    for (const char* hit : {"claves", "cowbell", "oriental_gong", "comet_1"}) {
        EXPECT_LT(rms, 0.7 * LoudestRms(Render(hit))) << hit;
    }
}

TEST(MediagenSounds, ABadSourceIsNamedWithItsLine) {
    EXPECT_EQ(ErrorOf("kind: hit\nlength: 0.1\npartial: 440 1 0.1\nvolume: 3\n").rfind("bad.sound:4: unknown key 'volume'", 0), 0u);
    EXPECT_EQ(ErrorOf("kind: hit\nlength: 0.1s\npartial: 440 1 0.1\n"), "bad.sound:2: length: '0.1s' is not a number");
    EXPECT_EQ(ErrorOf("# a click\nkind: hit\nlength: 0.1\npartial: 440 1\n").rfind("bad.sound:4: partial: ", 0), 0u);
    EXPECT_EQ(ErrorOf("kind: whoosh\nlength: 1\ntempo: 90\n").rfind("bad.sound:3: unknown key 'tempo'", 0), 0u);
    EXPECT_EQ(ErrorOf("kind: music\nchords: A2m H2\n").rfind("bad.sound:2: chords: 'H2'", 0), 0u);
    EXPECT_EQ(ErrorOf("kind: drum\n").rfind("bad.sound:1: kind ", 0), 0u);
    EXPECT_EQ(ErrorOf("length: 1\n").rfind("bad.sound:1: no 'kind:'", 0), 0u);
    EXPECT_EQ(ErrorOf("kind: hit\nchannels: 3\nlength: 1\npartial: 440 1 0.1\n").rfind("bad.sound:2: ", 0), 0u);
}

TEST(MediagenSounds, TheWriterRefusesWhatItCannotStore) {
    Sound sound;
    sound.channels = 3;
    sound.samples = {0, 0, 0};
    EXPECT_THROW(EncodeWav(sound), MediaError);
    sound.channels = 2;
    EXPECT_THROW(EncodeWav(sound), MediaError) << "half a frame";
    sound.channels = 1;
    sound.samples = {2.0f, -2.0f, 0.5f};
    const Wav wav = Decode(EncodeWav(sound));
    EXPECT_EQ(wav.samples, (std::vector<double>{32767 / 32768.0, -32767 / 32768.0, 16384 / 32768.0}));
}

}  // namespace
