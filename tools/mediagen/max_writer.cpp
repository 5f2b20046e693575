#include "tools/mediagen/max_writer.h"

#include <bit>
#include <string>

#include "tools/mediagen/media_error.h"

namespace mediagen {

namespace {

void Put16(std::vector<uint8_t>& out, uint16_t value) {
    out.push_back(uint8_t(value & 0xff));
    out.push_back(uint8_t(value >> 8));
}

void Put32(std::vector<uint8_t>& out, uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) out.push_back(uint8_t((value >> shift) & 0xff));
}

void PutFloat(std::vector<uint8_t>& out, float value) { Put32(out, std::bit_cast<uint32_t>(value)); }

// Opens a chunk whose length is filled in by EndChunk once its contents are written.
size_t BeginChunk(std::vector<uint8_t>& out, uint16_t id) {
    const size_t start = out.size();
    Put16(out, id);
    Put32(out, 0);
    return start;
}

void EndChunk(std::vector<uint8_t>& out, size_t start) {
    const uint32_t length = uint32_t(out.size() - start);
    for (int i = 0; i < 4; ++i) out[start + 2 + i] = uint8_t((length >> (8 * i)) & 0xff);
}

uint16_t Count(size_t count, const MaxObject& object, const char* what) {
    if (count > 0xffff) {
        throw MediaError("3DS object \"" + object.name + "\" has " + std::to_string(count) + " " + what +
                         "; a list holds at most 65535");
    }
    return uint16_t(count);
}

void WriteMesh(std::vector<uint8_t>& out, const MaxObject& object) {
    const size_t mesh = BeginChunk(out, 0x4100);

    const size_t vertexList = BeginChunk(out, 0x4110);
    Put16(out, Count(object.vertices.size(), object, "vertices"));
    for (const Vector3& v : object.vertices) {
        PutFloat(out, v.x);
        PutFloat(out, v.y);
        PutFloat(out, v.z);
    }
    EndChunk(out, vertexList);

    const size_t faceList = BeginChunk(out, 0x4120);
    Put16(out, Count(object.faces.size(), object, "faces"));
    for (const auto& face : object.faces) {
        for (uint16_t index : face) Put16(out, index);
        Put16(out, 0x0007);  // all three edges visible
    }
    const size_t smoothing = BeginChunk(out, 0x4150);
    for (size_t i = 0; i < object.faces.size(); ++i) Put32(out, 1);
    EndChunk(out, smoothing);
    EndChunk(out, faceList);

    if (!object.texCoords.empty()) {
        const size_t texCoords = BeginChunk(out, 0x4140);
        Put16(out, Count(object.texCoords.size(), object, "texture coordinates"));
        for (const auto& uv : object.texCoords) {
            PutFloat(out, uv[0]);
            PutFloat(out, uv[1]);
        }
        EndChunk(out, texCoords);
    }

    for (const MaxChunk& chunk : object.meshChunks) {
        const std::vector<uint8_t> bytes = MaxChunkBytes(chunk.id, chunk.body);
        out.insert(out.end(), bytes.begin(), bytes.end());
    }
    EndChunk(out, mesh);
}

void WriteObject(std::vector<uint8_t>& out, const MaxObject& object) {
    if (object.name.find('\0') != std::string::npos) throw MediaError("3DS object names cannot hold a zero byte");
    const size_t named = BeginChunk(out, 0x4000);
    out.insert(out.end(), object.name.begin(), object.name.end());
    out.push_back(0);
    if (object.light) {
        const size_t light = BeginChunk(out, 0x4600);
        PutFloat(out, object.light->x);
        PutFloat(out, object.light->y);
        PutFloat(out, object.light->z);
        EndChunk(out, light);
    } else {
        WriteMesh(out, object);
    }
    EndChunk(out, named);
}

}  // namespace

MaxObject MaxLight(const std::string& name, Vector3 position) {
    MaxObject light;
    light.name = name;
    light.light = position;
    return light;
}

std::vector<uint8_t> MaxChunkBytes(uint16_t id, const std::vector<uint8_t>& body) {
    std::vector<uint8_t> out;
    const size_t start = BeginChunk(out, id);
    out.insert(out.end(), body.begin(), body.end());
    EndChunk(out, start);
    return out;
}

std::vector<uint8_t> WriteMaxFile(const std::vector<MaxObject>& objects) {
    std::vector<uint8_t> out;
    const size_t main = BeginChunk(out, 0x4D4D);
    const size_t version = BeginChunk(out, 0x0002);
    Put32(out, 3);
    EndChunk(out, version);

    const size_t editor = BeginChunk(out, 0x3D3D);
    const size_t meshVersion = BeginChunk(out, 0x3D3E);
    Put32(out, 3);
    EndChunk(out, meshVersion);
    for (const MaxObject& object : objects) WriteObject(out, object);
    EndChunk(out, editor);

    EndChunk(out, main);
    return out;
}

}  // namespace mediagen
