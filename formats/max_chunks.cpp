#include "formats/max_chunks.h"

bool ReadChunkHeader(ByteCursor& cursor, ChunkHeader& header) {
    ChunkHeader read;
    if (!cursor.ReadU16(read.id) || !cursor.ReadU32(read.length)) return false;
    header = read;
    return true;
}

bool FindChunk(ByteCursor& cursor, uint16_t id, int64_t limit, ChunkHeader& header) {
    int64_t skipped = 0;
    while (ReadChunkHeader(cursor, header)) {
        if (header.id == id) return true;
        // A shorter chunk would have us seek backwards, or not at all, for ever.
        if (header.length < kChunkHeaderBytes) return false;
        cursor.Skip(int64_t(header.length) - kChunkHeaderBytes);
        skipped += header.length;
        if (skipped >= limit) return false;
    }
    return false;
}
