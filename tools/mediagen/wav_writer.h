#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace mediagen {

// A sound on its way to disk: samples in -1..1, channels interleaved (left first).
struct Sound {
    int rate = 44100;
    int channels = 1;  // 1 or 2
    std::vector<float> samples;

    size_t Frames() const { return channels > 0 ? samples.size() / size_t(channels) : 0; }
    double Seconds() const { return rate > 0 ? double(Frames()) / rate : 0; }
};

// The bytes of a 16-bit PCM RIFF/WAVE file: a 16-byte "fmt " chunk, then "data". Samples are
// rounded to the nearest step and clipped to full scale. Throws MediaError for anything but 1 or
// 2 channels at 8000..192000 Hz, or a sample count that does not fill whole frames.
std::vector<uint8_t> EncodeWav(const Sound& sound);

}  // namespace mediagen
