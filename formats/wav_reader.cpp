#include "formats/wav_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/byte_reader.h"
#include "core/file_read.h"

namespace {

constexpr size_t kRiffHeaderBytes = 12;  // "RIFF", size, "WAVE"
constexpr size_t kChunkHeaderBytes = 8;  // id, size
constexpr uint32_t kPcmFieldBytes = 16;  // the fields every format chunk starts with
constexpr uint16_t kFormatPcm = 1;
constexpr uint32_t kMaxSampleRate = 192000;

bool Fail(std::string& error, const std::string& name, const std::string& reason) {
    error = name + ": " + reason;
    return false;
}

bool HasTag(std::span<const uint8_t> bytes, size_t at, const char* tag) {
    return bytes.size() >= at + 4 && std::memcmp(bytes.data() + at, tag, 4) == 0;
}

std::string FormatName(uint16_t tag) {
    std::string text = "format " + std::to_string(tag);
    switch (tag) {
        case 2: return text + " (ADPCM)";
        case 3: return text + " (IEEE float)";
        case 6: return text + " (A-law)";
        case 7: return text + " (mu-law)";
        case 0x11: return text + " (IMA ADPCM)";
        case 0x55: return text + " (MP3)";
        case 0xFFFE: return text + " (extensible)";
        default: return text;
    }
}

// Where the chunk whose header starts at `at` ends, its pad byte included. 64-bit, so a stated
// size near 4 GiB cannot wrap; the result may lie beyond the bytes.
uint64_t ChunkEnd(size_t at, uint32_t size) { return uint64_t(at) + kChunkHeaderBytes + size + (size & 1u); }

struct Format {
    uint16_t tag = 0;
    uint16_t channels = 0;
    uint32_t sampleRate = 0;
    uint32_t bytesPerSecond = 0;
    uint16_t blockAlign = 0;
    uint16_t bitsPerSample = 0;
};

bool ReadFormat(std::span<const uint8_t> fields, Format& format) {
    ByteCursor cursor(fields);
    return cursor.ReadU16(format.tag) && cursor.ReadU16(format.channels) && cursor.ReadU32(format.sampleRate) &&
           cursor.ReadU32(format.bytesPerSecond) && cursor.ReadU16(format.blockAlign) &&
           cursor.ReadU16(format.bitsPerSample);
}

// The reason the format cannot be played, or empty.
std::string FormatProblem(const Format& format) {
    if (format.tag != kFormatPcm) return FormatName(format.tag) + " is not plain PCM";
    if (format.channels == 0) return "it has 0 channels";
    if (format.bitsPerSample != 8 && format.bitsPerSample != 16) {
        return std::to_string(format.bitsPerSample) + " bits per sample is not supported; only 8 or 16";
    }
    if (format.sampleRate == 0 || format.sampleRate > kMaxSampleRate) {
        return "sample rate " + std::to_string(format.sampleRate) + " is not between 1 and 192000";
    }
    return {};
}

}  // namespace

bool ParseWav(std::span<const uint8_t> bytes, const std::string& name, WavData& wav, std::string& error) {
    if (!HasTag(bytes, 0, "RIFF")) return Fail(error, name, "not a WAV file (no RIFF header)");
    if (!HasTag(bytes, 8, "WAVE")) return Fail(error, name, "not a WAV file (a RIFF file but not WAVE)");
    // The RIFF size is not checked: writers that stream often leave it wrong, and the chunks
    // are walked against the bytes actually present.
    size_t at = kRiffHeaderBytes;
    if (!HasTag(bytes, at, "fmt ")) return Fail(error, name, "the first chunk is not \"fmt \"");

    uint32_t formatSize = 0;
    if (!ByteCursor(bytes.subspan(at + 4)).ReadU32(formatSize)) {
        return Fail(error, name, "file ends inside the format chunk");
    }
    if (formatSize < kPcmFieldBytes) {
        return Fail(error, name, "format chunk of " + std::to_string(formatSize) + " bytes is shorter than 16");
    }
    const size_t fieldsAt = at + kChunkHeaderBytes;
    Format format;
    if (bytes.size() < fieldsAt + kPcmFieldBytes || !ReadFormat(bytes.subspan(fieldsAt, kPcmFieldBytes), format)) {
        return Fail(error, name, "file ends inside the format chunk");
    }
    if (const std::string problem = FormatProblem(format); !problem.empty()) return Fail(error, name, problem);

    uint64_t next = ChunkEnd(at, formatSize);
    while (next + kChunkHeaderBytes <= bytes.size()) {
        at = size_t(next);
        uint32_t size = 0;
        ByteCursor(bytes.subspan(at + 4)).ReadU32(size);
        if (!HasTag(bytes, at, "data")) {
            next = ChunkEnd(at, size);
            continue;
        }
        if (size > kWavMaxBytes) {
            return Fail(error, name,
                        "data chunk of " + std::to_string(size) + " bytes is larger than " +
                            DescribeByteCount(kWavMaxBytes));
        }
        const std::span<const uint8_t> present = bytes.subspan(at + kChunkHeaderBytes);
        const size_t kept = std::min<size_t>(size, present.size());
        WavData read{.channels = format.channels,
                     .blockAlign = format.blockAlign,
                     .bitsPerSample = format.bitsPerSample,
                     .sampleRate = format.sampleRate,
                     .bytesPerSecond = format.bytesPerSecond,
                     .data = std::vector<uint8_t>(present.begin(), present.begin() + kept)};
        read.data.resize(size, 0);
        wav = std::move(read);
        error.clear();
        return true;
    }
    return Fail(error, name, "no \"data\" chunk");
}

bool ReadWav(const std::string& path, WavData& wav, std::string& error) {
    std::vector<uint8_t> bytes;
    std::string reason;
    if (!ReadWholeFile(path, kWavMaxBytes, bytes, reason)) {
        if (bytes.size() > kWavMaxBytes) reason += ", too large for a sound";
        return Fail(error, path, reason);
    }
    return ParseWav(bytes, path, wav, error);
}
