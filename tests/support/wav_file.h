#pragma once
// Plain 16-bit PCM WAV files for tests: a sine tone of a given length and loudness.
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <vector>

inline std::vector<uint8_t> ToneWav(int channels, int rate, double seconds, double amplitude,
                                    double frequency = 440.0) {
    const uint32_t frames = uint32_t(seconds * rate);
    const uint32_t dataBytes = frames * uint32_t(channels) * 2;
    std::vector<uint8_t> out;
    const auto u16 = [&out](uint32_t v) {
        out.push_back(uint8_t(v));
        out.push_back(uint8_t(v >> 8));
    };
    const auto u32 = [&u16](uint32_t v) {
        u16(v & 0xFFFF);
        u16(v >> 16);
    };
    const auto tag = [&out](const char* id) { out.insert(out.end(), id, id + 4); };
    tag("RIFF");
    u32(36 + dataBytes);
    tag("WAVE");
    tag("fmt ");
    u32(16);
    u16(1);
    u16(uint32_t(channels));
    u32(uint32_t(rate));
    u32(uint32_t(rate * channels * 2));
    u16(uint32_t(channels * 2));
    u16(16);
    tag("data");
    u32(dataBytes);
    const double pi = std::acos(-1.0);
    for (uint32_t i = 0; i < frames; ++i) {
        const double value = amplitude * 32767.0 * std::sin(2 * pi * frequency * i / rate);
        for (int c = 0; c < channels; ++c) u16(uint32_t(int32_t(std::lround(value))) & 0xFFFF);
    }
    return out;
}

inline void WriteToneWav(const std::filesystem::path& path, int channels, double seconds, double amplitude = 0.5,
                         double frequency = 440.0) {
    std::filesystem::create_directories(path.parent_path());
    const std::vector<uint8_t> bytes = ToneWav(channels, 22050, seconds, amplitude, frequency);
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}
