#pragma once
// Reads what OpenAL's file-writing output wrote: a RIFF WAVE of 16-bit integer or 32-bit float
// samples, plain or in the extensible layout. Only what the tests measure: the loudest sample.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

struct Mix {
    int channels = 0;
    int rate = 0;
    std::vector<float> samples;  // interleaved, full scale 1

    float Peak() const {
        float peak = 0;
        for (float s : samples) peak = std::max(peak, std::fabs(s));
        return peak;
    }
    double Seconds() const { return channels && rate ? double(samples.size()) / channels / rate : 0; }
};

inline Mix ReadMix(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    const auto u16 = [&bytes](size_t at) { return uint32_t(bytes[at] | bytes[at + 1] << 8); };
    const auto u32 = [&u16](size_t at) { return u16(at) | u16(at + 2) << 16; };
    Mix mix;
    if (bytes.size() < 12 || std::memcmp(bytes.data(), "RIFF", 4) != 0) return mix;
    bool isFloat = false;
    int bits = 0;
    for (size_t at = 12; at + 8 <= bytes.size();) {
        const uint32_t size = u32(at + 4);
        const size_t body = at + 8;
        if (std::memcmp(&bytes[at], "fmt ", 4) == 0 && body + 16 <= bytes.size()) {
            uint32_t tag = u16(body);
            mix.channels = int(u16(body + 2));
            mix.rate = int(u32(body + 4));
            bits = int(u16(body + 14));
            if (tag == 0xFFFE && body + 26 <= bytes.size()) tag = u16(body + 24);
            isFloat = tag == 3;
        } else if (std::memcmp(&bytes[at], "data", 4) == 0) {
            // The writer may not have stated the size of a file still being written.
            const size_t end = std::min(bytes.size(), size == 0 ? bytes.size() : body + size);
            const size_t step = size_t(bits / 8);
            for (size_t i = body; step && i + step <= end; i += step) {
                if (isFloat && bits == 32) {
                    float value;
                    std::memcpy(&value, &bytes[i], 4);
                    mix.samples.push_back(value);
                } else if (bits == 16) {
                    mix.samples.push_back(float(int16_t(u16(i))) / 32768.0f);
                }
            }
            break;
        }
        at = body + size + (size & 1);
    }
    return mix;
}
