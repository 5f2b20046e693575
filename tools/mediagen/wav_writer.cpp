#include "tools/mediagen/wav_writer.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "tools/mediagen/media_error.h"

namespace mediagen {

namespace {

void PutTag(std::vector<uint8_t>& out, const char* tag) { out.insert(out.end(), tag, tag + 4); }

void PutLittle(std::vector<uint8_t>& out, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) out.push_back(uint8_t((value >> (8 * i)) & 0xff));
}

}  // namespace

std::vector<uint8_t> EncodeWav(const Sound& sound) {
    if (sound.channels != 1 && sound.channels != 2) {
        throw MediaError("WAV sounds need 1 or 2 channels, not " + std::to_string(sound.channels));
    }
    if (sound.rate < 8000 || sound.rate > 192000) {
        throw MediaError("WAV sample rate must be 8000 to 192000 Hz, not " + std::to_string(sound.rate));
    }
    if (sound.samples.size() % size_t(sound.channels) != 0) {
        throw MediaError("WAV samples do not fill whole frames of " + std::to_string(sound.channels) + " channels");
    }
    constexpr size_t kMaxData = 0xffffffffu - 36;  // RIFF sizes are 32-bit
    const size_t dataBytes = sound.samples.size() * 2;
    if (dataBytes > kMaxData) throw MediaError("WAV sound too long: " + std::to_string(dataBytes) + " bytes");

    const uint32_t blockAlign = uint32_t(sound.channels) * 2;
    std::vector<uint8_t> out;
    out.reserve(44 + dataBytes);
    PutTag(out, "RIFF");
    PutLittle(out, uint32_t(36 + dataBytes), 4);
    PutTag(out, "WAVE");
    PutTag(out, "fmt ");
    PutLittle(out, 16, 4);
    PutLittle(out, 1, 2);  // PCM
    PutLittle(out, uint32_t(sound.channels), 2);
    PutLittle(out, uint32_t(sound.rate), 4);
    PutLittle(out, uint32_t(sound.rate) * blockAlign, 4);
    PutLittle(out, blockAlign, 2);
    PutLittle(out, 16, 2);
    PutTag(out, "data");
    PutLittle(out, uint32_t(dataBytes), 4);
    for (float sample : sound.samples) {
        const double scaled = std::clamp(double(sample), -1.0, 1.0) * 32767.0;
        const int value = int(std::lround(scaled));
        PutLittle(out, uint32_t(uint16_t(int16_t(value))), 2);
    }
    return out;
}

}  // namespace mediagen
