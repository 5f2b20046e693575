// Any bytes as a WAV file. The reader refuses them with a reason naming the file, or returns a
// playable PCM format and exactly the data size the file's data chunk states, found here by a
// walk of its own. Every data byte is read, so a buffer shorter than it claims is caught.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

#include "formats/wav_reader.h"
#include "tests/fuzz/fuzz_check.h"

namespace {

uint32_t U32At(const uint8_t* data, size_t at) {
    return uint32_t(data[at]) | (uint32_t(data[at + 1]) << 8) | (uint32_t(data[at + 2]) << 16) |
           (uint32_t(data[at + 3]) << 24);
}

// The size stated by the first "data" chunk of the walk from the format chunk on, or -1.
int64_t StatedDataSize(const uint8_t* data, size_t size) {
    uint64_t at = 12;
    while (at + 8 <= size) {
        const uint32_t chunkSize = U32At(data, size_t(at) + 4);
        if (std::memcmp(data + at, "data", 4) == 0) return chunkSize;
        at += 8 + uint64_t(chunkSize) + (chunkSize & 1u);
    }
    return -1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string name = "fuzz.wav";
    WavData wav;
    std::string error;
    if (!ParseWav(std::span<const uint8_t>(data, size), name, wav, error)) {
        Require(error.rfind(name + ": ", 0) == 0, "a refused WAV gets an error naming the file");
        return 0;
    }
    Require(error.empty(), "a WAV that loads leaves no error");
    Require(wav.channels > 0, "a loaded WAV has channels");
    Require(wav.bitsPerSample == 8 || wav.bitsPerSample == 16, "a loaded WAV has 8 or 16 bits per sample");
    Require(wav.sampleRate > 0 && wav.sampleRate <= 192000, "a loaded WAV has a sample rate of 1 to 192000");
    Require(wav.data.size() <= kWavMaxBytes, "a loaded WAV's data stays under the cap");
    Require(int64_t(wav.data.size()) == StatedDataSize(data, size),
            "a loaded WAV's data is as long as its data chunk states");

    uint32_t sum = 0;
    for (uint8_t byte : wav.data) sum += byte;
    // Kept, so the loop that reads every byte is not optimised away.
    volatile uint32_t sink = sum;
    (void)sink;
    return 0;
}
