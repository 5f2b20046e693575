#pragma once
#include <cstddef>
#include <cstdint>
#include <span>

// Little-endian reads from bytes already in memory. Skipping past the end is allowed, so a
// chunk may claim more bytes than the file has; every read after that fails.
class ByteCursor {
public:
    explicit ByteCursor(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    bool ReadU8(uint8_t& value);
    bool ReadU16(uint16_t& value);
    bool ReadU32(uint32_t& value);
    bool ReadFloat(float& value);
    // A negative count is a caller bug; it is ignored rather than moving backwards.
    void Skip(int64_t count);
    bool AtEnd() const { return position_ >= bytes_.size(); }

private:
    bool Take(size_t count, const uint8_t*& at);

    std::span<const uint8_t> bytes_;
    size_t position_ = 0;  // never beyond bytes_.size(): a skip past the end stops there
};

// Every chunk starts with an id and a length that counts this header, the chunk's own data
// and all its sub-chunks.
struct ChunkHeader {
    uint16_t id = 0;
    uint32_t length = 0;
};
constexpr int64_t kChunkHeaderBytes = 6;

// Reads the next header into header; false, leaving header alone, if six bytes are not there.
bool ReadChunkHeader(ByteCursor& cursor, ChunkHeader& header);

// Reads headers into header, skipping chunks, until one has the wanted id; the cursor is then
// just after that header. Fails when a header cannot be read, when a chunk is shorter than its
// own header, or when the chunks skipped add up to limit bytes or more. A negative limit thus
// accepts only the very next chunk.
bool FindChunk(ByteCursor& cursor, uint16_t id, int64_t limit, ChunkHeader& header);
