#include "formats/wav_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/files.h"

namespace {

void PutU16(std::vector<uint8_t>& out, uint32_t value) {
    out.push_back(uint8_t(value));
    out.push_back(uint8_t(value >> 8));
}

void PutU32(std::vector<uint8_t>& out, uint32_t value) {
    PutU16(out, value & 0xFFFF);
    PutU16(out, value >> 16);
}

struct FmtFields {
    uint16_t tag = 1;
    uint16_t channels = 1;
    uint32_t sampleRate = 22050;
    uint16_t bitsPerSample = 16;
    uint32_t size = 16;  // bytes past the 16 PCM fields are 0xEE, so reading them shows
};

std::vector<uint8_t> FmtBody(const FmtFields& f) {
    const uint16_t blockAlign = uint16_t(f.channels * (f.bitsPerSample / 8));
    std::vector<uint8_t> body;
    PutU16(body, f.tag);
    PutU16(body, f.channels);
    PutU32(body, f.sampleRate);
    PutU32(body, f.sampleRate * blockAlign);
    PutU16(body, blockAlign);
    PutU16(body, f.bitsPerSample);
    body.resize(f.size, 0xEE);
    return body;
}

// A RIFF file put together chunk by chunk; sizes may be stated falsely.
class WavBytes {
public:
    // The chunk's header states `stated` bytes (its body's size when left out); an odd body
    // gets its pad byte.
    WavBytes& Chunk(const char* id, const std::vector<uint8_t>& body, int64_t stated = -1) {
        chunks_.insert(chunks_.end(), id, id + 4);
        PutU32(chunks_, stated < 0 ? uint32_t(body.size()) : uint32_t(stated));
        chunks_.insert(chunks_.end(), body.begin(), body.end());
        if (body.size() % 2) chunks_.push_back(0xAA);
        return *this;
    }
    WavBytes& Fmt(const FmtFields& fields = {}) { return Chunk("fmt ", FmtBody(fields)); }
    std::vector<uint8_t> Bytes(const char* riff = "RIFF", const char* form = "WAVE") const {
        std::vector<uint8_t> out(riff, riff + 4);
        PutU32(out, uint32_t(4 + chunks_.size()));
        out.insert(out.end(), form, form + 4);
        out.insert(out.end(), chunks_.begin(), chunks_.end());
        return out;
    }

private:
    std::vector<uint8_t> chunks_;
};

const std::vector<uint8_t> kSamples = {1, 2, 3, 4, 5, 6, 7, 8};

bool Parse(const std::vector<uint8_t>& bytes, WavData& wav, std::string& error) {
    return ParseWav(bytes, "s.wav", wav, error);
}

TEST(WavReaderTest, ReadsPcmFieldsAndDataWhateverTheFormatChunkSizeAndChunksBeforeData) {
    struct Case {
        const char* label;
        std::vector<uint8_t> bytes;
        uint16_t channels, bits;
        uint32_t rate;
    };
    const std::vector<Case> cases = {
        {"16-bit mono", WavBytes().Fmt().Chunk("data", kSamples).Bytes(), 1, 16, 22050},
        {"8-bit stereo", WavBytes().Fmt({.channels = 2, .sampleRate = 11025, .bitsPerSample = 8})
                             .Chunk("data", kSamples).Bytes(), 2, 8, 11025},
        {"highest rate", WavBytes().Fmt({.sampleRate = 192000}).Chunk("data", kSamples).Bytes(), 1, 16, 192000},
        {"18-byte fmt", WavBytes().Fmt({.size = 18}).Chunk("data", kSamples).Bytes(), 1, 16, 22050},
        {"40-byte fmt", WavBytes().Fmt({.channels = 2, .size = 40}).Chunk("data", kSamples).Bytes(), 2, 16, 22050},
        {"odd fmt with pad", WavBytes().Fmt({.size = 19}).Chunk("data", kSamples).Bytes(), 1, 16, 22050},
        {"odd LIST and other chunks first",
         WavBytes().Fmt().Chunk("LIST", {'I', 'N', 'F', 'O', 'x'}).Chunk("fact", {0, 1, 0, 0})
             .Chunk("data", kSamples).Chunk("LIST", {1}).Bytes(), 1, 16, 22050},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        WavData wav;
        std::string error = "left over";
        ASSERT_TRUE(Parse(c.bytes, wav, error)) << error;
        EXPECT_TRUE(error.empty());
        EXPECT_EQ(wav.channels, c.channels);
        EXPECT_EQ(wav.bitsPerSample, c.bits);
        EXPECT_EQ(wav.sampleRate, c.rate);
        EXPECT_EQ(wav.blockAlign, c.channels * c.bits / 8);
        EXPECT_EQ(wav.bytesPerSecond, c.rate * wav.blockAlign);
        EXPECT_EQ(wav.data, kSamples);
    }
}

TEST(WavReaderTest, DataCutShortIsZeroFilledToItsStatedSize) {
    std::vector<uint8_t> bytes = WavBytes().Fmt().Chunk("data", kSamples, 12).Bytes();
    WavData wav;
    std::string error;
    ASSERT_TRUE(Parse(bytes, wav, error)) << error;
    std::vector<uint8_t> expected = kSamples;
    expected.resize(12, 0);
    EXPECT_EQ(wav.data, expected);

    // Only the header of the data chunk: all silence.
    bytes = WavBytes().Fmt().Chunk("data", {}, 6).Bytes();
    ASSERT_TRUE(Parse(bytes, wav, error)) << error;
    EXPECT_EQ(wav.data, std::vector<uint8_t>(6, 0));
}

TEST(WavReaderTest, RefusesWhatItCannotPlayWithTheReasonAndLeavesTheSoundAlone) {
    struct Case {
        const char* label;
        std::vector<uint8_t> bytes;
        const char* reason;
    };
    const std::vector<Case> cases = {
        {"empty", {}, "s.wav: not a WAV file (no RIFF header)"},
        {"not RIFF", WavBytes().Fmt().Chunk("data", kSamples).Bytes("RIFX"),
         "s.wav: not a WAV file (no RIFF header)"},
        {"not WAVE", WavBytes().Fmt().Chunk("data", kSamples).Bytes("RIFF", "AVI "), "a RIFF file but not WAVE"},
        {"LIST first", WavBytes().Chunk("LIST", {1, 2}).Fmt().Chunk("data", kSamples).Bytes(),
         "s.wav: the first chunk is not \"fmt \""},
        {"fmt too short", WavBytes().Chunk("fmt ", std::vector<uint8_t>(14, 1)).Chunk("data", kSamples).Bytes(),
         "format chunk of 14 bytes is shorter than 16"},
        {"float", WavBytes().Fmt({.tag = 3, .bitsPerSample = 32}).Chunk("data", kSamples).Bytes(),
         "s.wav: format 3 (IEEE float) is not plain PCM"},
        {"ADPCM", WavBytes().Fmt({.tag = 2, .size = 50}).Chunk("data", kSamples).Bytes(),
         "format 2 (ADPCM) is not plain PCM"},
        {"extensible", WavBytes().Fmt({.tag = 0xFFFE, .size = 40}).Chunk("data", kSamples).Bytes(),
         "format 65534 (extensible) is not plain PCM"},
        {"unknown tag", WavBytes().Fmt({.tag = 0x1234}).Chunk("data", kSamples).Bytes(),
         "format 4660 is not plain PCM"},
        {"no channels", WavBytes().Fmt({.channels = 0}).Chunk("data", kSamples).Bytes(), "0 channels"},
        {"24 bits", WavBytes().Fmt({.bitsPerSample = 24}).Chunk("data", kSamples).Bytes(),
         "24 bits per sample is not supported"},
        {"rate 0", WavBytes().Fmt({.sampleRate = 0}).Chunk("data", kSamples).Bytes(), "sample rate 0 is not"},
        {"rate too high", WavBytes().Fmt({.sampleRate = 192001}).Chunk("data", kSamples).Bytes(),
         "sample rate 192001 is not between 1 and 192000"},
        {"no data", WavBytes().Fmt().Chunk("LIST", {1, 2, 3}).Bytes(), "s.wav: no \"data\" chunk"},
        // A chunk claiming to run past the end hides whatever follows it.
        {"data hidden by a long LIST", WavBytes().Fmt().Chunk("LIST", {1, 2}, 100).Chunk("data", kSamples).Bytes(),
         "no \"data\" chunk"},
        {"data over the cap", WavBytes().Fmt().Chunk("data", kSamples, int64_t(kWavMaxBytes) + 1).Bytes(),
         "data chunk of 67108865 bytes is larger than 64 MiB"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        WavData wav{.channels = 9, .data = {42}};
        std::string error;
        EXPECT_FALSE(Parse(c.bytes, wav, error));
        EXPECT_EQ(error.rfind("s.wav: ", 0), 0u) << error;
        EXPECT_NE(error.find(c.reason), std::string::npos) << error;
        EXPECT_EQ(wav.channels, 9);
        EXPECT_EQ(wav.data, std::vector<uint8_t>{42});
    }
}

TEST(WavReaderTest, EveryTruncationFailsCleanlyOrKeepsTheStatedDataSize) {
    const std::vector<uint8_t> whole =
        WavBytes().Fmt({.size = 18}).Chunk("LIST", {'I', 'N', 'F', 'O', 'x'}).Chunk("data", kSamples).Bytes();
    const size_t dataHeaderEnd = whole.size() - kSamples.size();
    for (size_t length = 0; length <= whole.size(); ++length) {
        SCOPED_TRACE(length);
        // A copy of exactly that length, so reading past it is caught under the sanitizers.
        const std::vector<uint8_t> cut(whole.begin(), whole.begin() + std::ptrdiff_t(length));
        WavData wav;
        std::string error;
        const bool read = Parse(cut, wav, error);
        EXPECT_EQ(read, length >= dataHeaderEnd) << error;
        if (read) {
            ASSERT_EQ(wav.data.size(), kSamples.size());
            for (size_t i = 0; i < kSamples.size(); ++i) {
                EXPECT_EQ(wav.data[i], i < length - dataHeaderEnd ? kSamples[i] : 0);
            }
        } else {
            EXPECT_EQ(error.rfind("s.wav: ", 0), 0u) << error;
        }
    }
}

TEST(WavReaderTest, ReadsFilesAndNamesTheOnesItCannotRead) {
    TempDir dir;
    const std::string path = dir.File("beep.wav");
    WriteBytes(path, WavBytes().Fmt().Chunk("data", kSamples).Bytes());
    WavData wav;
    std::string error;
    ASSERT_TRUE(ReadWav(path, wav, error)) << error;
    EXPECT_EQ(wav.data, kSamples);

    const std::string missing = dir.File("missing.wav");
    EXPECT_FALSE(ReadWav(missing, wav, error));
    EXPECT_EQ(error, missing + ": cannot open file");

    WriteBytes(dir.File("text.wav"), {'h', 'i'});
    EXPECT_FALSE(ReadWav(dir.File("text.wav"), wav, error));
    EXPECT_EQ(error, dir.File("text.wav") + ": not a WAV file (no RIFF header)");

    // Endless bytes stop at the cap instead of filling memory.
    EXPECT_FALSE(ReadWav("/dev/zero", wav, error));
    EXPECT_EQ(error, "/dev/zero: file is larger than 64 MiB, too large for a sound");
    EXPECT_EQ(wav.data, kSamples);
}

}  // namespace
