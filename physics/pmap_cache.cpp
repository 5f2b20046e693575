#include "physics/pmap_cache.h"

#include <cstdio>
#include <vector>

#include "core/file_read.h"
#include "physics/triangle_mesh.h"

namespace {

constexpr uint32_t kDensity = 64;
// Larger files are not maps of ours; reading them would only cost memory.
constexpr size_t kMaxFileBytes = size_t(64) << 20;

}  // namespace

std::string PMapFileName(uint32_t numVertices, uint32_t numTriangles) {
    const uint32_t product = ((numTriangles << 8) | numVertices) * (numVertices ^ numTriangles);
    return std::to_string(int32_t(product)) + ".pmap";
}

PMapSource AttachCachedPMap(phys::TriangleMesh& mesh) {
    const std::string name = PMapFileName(mesh.GetVertexCount(), mesh.GetTriangleCount());
    bool store = true;
    // A file that is missing, unreadable or too large to be ours is computed again and replaced.
    std::vector<uint8_t> bytes;
    std::string reason;
    if (ReadWholeFile(name, kMaxFileBytes, bytes, reason)) {
        const phys::PMap cached{uint32_t(bytes.size()), bytes.data()};
        const phys::MapCheck check = mesh.LoadPMap(cached);
        if (check == phys::MapCheck::Valid) return PMapSource::File;
        store = check == phys::MapCheck::Corrupt;
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
