#pragma once
#include <cstdint>

#include "core/byte_reader.h"

// The chunk structure of 3DS files.

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
