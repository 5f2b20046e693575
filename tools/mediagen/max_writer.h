#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/vector3.h"

namespace mediagen {

// A chunk written as it is: header, then body.
struct MaxChunk {
    uint16_t id = 0;
    std::vector<uint8_t> body{};
};

// A named object of a 3DS file: a triangle mesh, or a light when light is set.
struct MaxObject {
    std::string name{};
    std::vector<Vector3> vertices{};
    std::vector<std::array<uint16_t, 3>> faces{};   // vertex indices, counter-clockwise from the front
    std::vector<std::array<float, 2>> texCoords{};  // u, v; none writes no texture coordinate list
    std::vector<MaxChunk> meshChunks{};             // written in the mesh after the lists
    std::optional<Vector3> light{};                 // a light here instead of a mesh
};

MaxObject MaxLight(const std::string& name, Vector3 position);

// The bytes of a 3DS file holding the objects in order:
//   main 0x4D4D: version 0x0002 (4 bytes), editor data 0x3D3D:
//     mesh version 0x3D3E (4 bytes), then per object a named object 0x4000: name, zero byte,
//       triangle mesh 0x4100: vertex list 0x4110, face list 0x4120 (faces, then a smoothing
//       group chunk 0x4150 putting every face in group 1), texture coordinates 0x4140 if any,
//       meshChunks
//       or, for a light, light 0x4600: position
// Nothing is checked against anything else, so tests can write faces that use missing
// vertices. Throws MediaError if a list has more than 65535 entries or a name holds a zero.
std::vector<uint8_t> WriteMaxFile(const std::vector<MaxObject>& objects);

// One chunk: a six-byte header whose length counts itself and the body, then the body.
std::vector<uint8_t> MaxChunkBytes(uint16_t id, const std::vector<uint8_t>& body);

}  // namespace mediagen
