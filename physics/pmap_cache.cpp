#include "physics/pmap_cache.h"

#include <cstdio>
#include <vector>

#include "physics/triangle_mesh.h"

namespace {

constexpr uint32_t kDensity = 64;
// Larger files are not maps of ours; reading them would only cost memory.
constexpr long kMaxFileBytes = 64l << 20;

bool ReadWholeFile(std::FILE* file, std::vector<uint8_t>& bytes) {
    if (std::fseek(file, 0, SEEK_END) != 0) return false;
    const long length = std::ftell(file);
    if (length < 0 || length > kMaxFileBytes || std::fseek(file, 0, SEEK_SET) != 0) return false;
    bytes.resize(size_t(length));
    return length == 0 || std::fread(bytes.data(), size_t(length), 1, file) == 1;
}

}  // namespace

std::string PMapFileName(uint32_t numVertices, uint32_t numTriangles) {
    const uint32_t product = ((numTriangles << 8) | numVertices) * (numVertices ^ numTriangles);
    return std::to_string(int32_t(product)) + ".pmap";
}

PMapSource AttachCachedPMap(phys::TriangleMesh& mesh) {
    const std::string name = PMapFileName(mesh.GetVertexCount(), mesh.GetTriangleCount());
    bool store = true;
    if (std::FILE* file = std::fopen(name.c_str(), "rb")) {
        std::vector<uint8_t> bytes;
        const bool read = ReadWholeFile(file, bytes);
        std::fclose(file);
        if (read) {
            const phys::PMap cached{uint32_t(bytes.size()), bytes.data()};
            const phys::MapCheck check = mesh.LoadPMap(cached);
            if (check == phys::MapCheck::Valid) return PMapSource::File;
            store = check == phys::MapCheck::Corrupt;
        }
    }

    phys::PMap map;
    if (!phys::CreatePMap(map, mesh, kDensity)) return PMapSource::None;
    if (store) {
        if (std::FILE* file = std::fopen(name.c_str(), "wb")) {
            std::fwrite(map.data, map.dataSize, 1, file);
            std::fclose(file);
        }
    }
    mesh.LoadPMap(map);
    phys::ReleasePMap(map);
    return PMapSource::Computed;
}
