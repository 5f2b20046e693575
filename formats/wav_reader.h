#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// A plain PCM WAV sound (RIFF/WAVE, little-endian, format tag 1) of 1 or more channels,
// 8 or 16 bits per sample, at 1 to 192000 samples a second. The file's first chunk must be
// "fmt "; a longer format chunk (18 or 40 bytes) is read for its first 16 bytes. Chunks before
// "data" (LIST and any other) are skipped by their stated sizes, with the pad byte of odd ones.
// Float, ADPCM, extensible and every other format tag are refused, naming the tag.
struct WavData {
    uint16_t channels = 0;
    uint16_t blockAlign = 0;
    uint16_t bitsPerSample = 0;
    uint32_t sampleRate = 0;
    uint32_t bytesPerSecond = 0;
    // Exactly the size the data chunk states: when the file ends early the missing tail is
    // silence (zeros), as other players treat a cut-off recording.
    std::vector<uint8_t> data;
};

// The largest file read and the largest data chunk kept: minutes of CD-quality sound, far
// more than any sound of the game; anything larger was named by mistake.
inline constexpr size_t kWavMaxBytes = size_t(64) << 20;

// Reads and checks a WAV file of at most kWavMaxBytes. On failure returns false and sets error
// to "PATH: reason"; wav is left as it was.
bool ReadWav(const std::string& path, WavData& wav, std::string& error);
// The same checks on bytes already in memory; name stands for the file in the error text.
// Never reads outside bytes.
bool ParseWav(std::span<const uint8_t> bytes, const std::string& name, WavData& wav, std::string& error);
