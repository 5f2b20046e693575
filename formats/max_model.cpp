#include "formats/max_model.h"

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "core/file_read.h"
#include "formats/max_chunks.h"

namespace {

constexpr uint16_t kMainChunk = 0x4D4D;
constexpr uint16_t kEditorData = 0x3D3D;
constexpr uint16_t kNamedObject = 0x4000;
constexpr uint16_t kTriangleMesh = 0x4100;
constexpr uint16_t kVertexList = 0x4110;
constexpr uint16_t kFaceList = 0x4120;
constexpr uint16_t kTexCoordList = 0x4140;

// Game models are a tiny fraction of this; a file this big was named by mistake.
constexpr size_t kMaxFileBytes = size_t(64) << 20;

std::string Hex(uint16_t id) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%04X", unsigned(id));
    return text;
}

// Walks the chunks of a 3DS file. Every header read anywhere lands in the one header_, and the
// search for the next object takes its limit from whatever header that was.
class MaxReader {
public:
    explicit MaxReader(std::span<const uint8_t> bytes) : cursor_(bytes) {}

    bool Read(Model& model) {
        if (!FindChunk(cursor_, kMainChunk, -1, header_)) {
            return Fail("not a 3DS file: it does not start with a main chunk (" + Hex(kMainChunk) + ")");
        }
        if (!FindChunk(cursor_, kEditorData, Remaining(), header_)) {
            return Fail("no editor data chunk (" + Hex(kEditorData) + ") in the main chunk");
        }
        for (int object = 1; !cursor_.AtEnd(); ++object) {
            if (!FindChunk(cursor_, kNamedObject, Remaining(), header_)) break;
            const int64_t objectLength = header_.length;
            int64_t nameBytes = 0;
            if (!SkipName(nameBytes)) {
                return Fail("the name of object " + std::to_string(object) + " has no terminating zero byte");
            }
            if (!FindChunk(cursor_, kTriangleMesh, objectLength - nameBytes - kChunkHeaderBytes, header_)) {
                continue;  // a light or a camera
            }
            SubModel& sub = model.AddSubModel();
            if (!ReadMesh(sub, Remaining()) || !CheckIndices(sub)) {
                reason_ = "object " + std::to_string(object) + ": " + reason_;
                return false;
            }
        }
        return true;
    }

    const std::string& Reason() const { return reason_; }

private:
    bool Fail(const std::string& reason) {
        reason_ = reason;
        return false;
    }

    // The bytes of the chunk whose header was read last, after that header.
    int64_t Remaining() const { return int64_t(header_.length) - kChunkHeaderBytes; }

    // The whole name is skipped, however long, so the cursor never stops inside it.
    bool SkipName(int64_t& bytesRead) {
        uint8_t c = 0;
        do {
            if (!cursor_.ReadU8(c)) return false;
            ++bytesRead;
        } while (c != 0);
        return true;
    }

    bool ReadMesh(SubModel& sub, int64_t limit) {
        const size_t base = sub.vertices.size();
        bool vertices = false, faces = false, texCoords = false;
        int64_t total = 0;
        for (;;) {
            if (!ReadChunkHeader(cursor_, header_)) return Fail("the file ends inside a triangle mesh");
            const int64_t length = header_.length;
            if (length < kChunkHeaderBytes) {
                return Fail("chunk " + Hex(header_.id) + " in a triangle mesh claims " + std::to_string(length) +
                            " bytes, less than its own header");
            }
            switch (header_.id) {
                case kVertexList:
                    if (!ReadVertices(sub, length)) return false;
                    vertices = true;
                    break;
                case kFaceList:
                    if (!ReadFaces(sub, length, base)) return false;
                    faces = true;
                    break;
                case kTexCoordList:
                    if (!ReadTexCoords(sub, length)) return false;
                    texCoords = true;
                    break;
                default:
                    cursor_.Skip(length - kChunkHeaderBytes);
            }
            total += length;
            if (vertices && faces && texCoords) {
                if (total > limit) return Overrun(total, limit);
                cursor_.Skip(limit - total);
                return true;
            }
            if (total >= limit) {
                if (total > limit) return Overrun(total, limit);
                if (!vertices) return Fail("the triangle mesh has no vertex list");
                if (!faces) return Fail("the triangle mesh has no face list");
                // Untextured meshes still get one coordinate per vertex.
                if (sub.texCoords.size() < sub.vertices.size()) {
                    sub.texCoords.resize(sub.texCoords.size() + (sub.vertices.size() - base), TexCoord{0, 0});
                }
                return true;
            }
        }
    }

    bool Overrun(int64_t total, int64_t limit) {
        return Fail("the chunks of a triangle mesh take " + std::to_string(total) + " bytes but the mesh has " +
                    std::to_string(limit));
    }

    // Reads a list's 16-bit count and checks that count items of itemBytes fit the chunk; rest
    // is what the chunk holds after them.
    bool ReadCount(const char* what, int64_t length, int64_t itemBytes, uint16_t& count, int64_t& rest) {
        if (!cursor_.ReadU16(count)) return Fail(std::string("the file ends inside a ") + what);
        rest = length - kChunkHeaderBytes - 2 - itemBytes * count;
        if (rest < 0) {
            return Fail("a " + std::string(what) + " of " + std::to_string(count) + " entries does not fit its " +
                        std::to_string(length) + "-byte chunk");
        }
        return true;
    }

    bool ReadVertices(SubModel& sub, int64_t length) {
        uint16_t count = 0;
        int64_t rest = 0;
        if (!ReadCount("vertex list", length, 12, count, rest)) return false;
        for (uint16_t i = 0; i < count; ++i) {
            float x = 0, y = 0, z = 0;
            if (!cursor_.ReadFloat(x) || !cursor_.ReadFloat(y) || !cursor_.ReadFloat(z)) {
                return Fail("the file ends inside a vertex list");
            }
            sub.AddVertex(x, y, z);
        }
        cursor_.Skip(rest);
        return true;
    }

    bool ReadFaces(SubModel& sub, int64_t length, size_t base) {
        uint16_t count = 0;
        int64_t rest = 0;
        if (!ReadCount("face list", length, 8, count, rest)) return false;
        for (uint16_t i = 0; i < count; ++i) {
            uint16_t a = 0, b = 0, c = 0, flags = 0;
            if (!cursor_.ReadU16(a) || !cursor_.ReadU16(b) || !cursor_.ReadU16(c) || !cursor_.ReadU16(flags)) {
                return Fail("the file ends inside a face list");
            }
            sub.AddTriangle(uint32_t(a + base), uint32_t(b + base), uint32_t(c + base));
        }
        cursor_.Skip(rest);  // material and smoothing groups
        return true;
    }

    bool ReadTexCoords(SubModel& sub, int64_t length) {
        uint16_t count = 0;
        int64_t rest = 0;
        if (!ReadCount("texture coordinate list", length, 8, count, rest)) return false;
        for (uint16_t i = 0; i < count; ++i) {
            float u = 0, v = 0;
            if (!cursor_.ReadFloat(u) || !cursor_.ReadFloat(v)) {
                return Fail("the file ends inside a texture coordinate list");
            }
            sub.AddTexCoord(u, v);
        }
        cursor_.Skip(rest);
        return true;
    }

    // Everything downstream indexes the vertex array with these without looking.
    bool CheckIndices(const SubModel& sub) {
        const size_t count = sub.vertices.size();
        for (size_t face = 0; face < sub.triangles.size(); ++face) {
            const Triangle& t = sub.triangles[face];
            for (uint32_t index : {t.a, t.b, t.c}) {
                if (index >= count) {
                    return Fail("face " + std::to_string(face) + " uses vertex " + std::to_string(index) +
                                " but the mesh has " + std::to_string(count) + " vertices");
                }
            }
        }
        return true;
    }

    ByteCursor cursor_;
    ChunkHeader header_;
    std::string reason_;
};

}  // namespace

bool MaxModel::Load(const std::string& path) {
    loadError_.clear();
    std::vector<uint8_t> bytes;
    std::string reason;
    if (!ReadWholeFile(path, kMaxFileBytes, bytes, reason)) {
        loadError_ = path + ": " + reason;
        if (bytes.size() > kMaxFileBytes) loadError_ += ", too large for a model";
        return false;
    }
    return LoadBytes(bytes, path);
}

bool MaxModel::LoadBytes(std::span<const uint8_t> bytes, const std::string& name) {
    loadError_.clear();
    MaxReader reader(bytes);
    if (!reader.Read(*this)) {
        loadError_ = name + ": " + reader.Reason();
        return false;
    }
    ComputeNormals();
    return true;
}
