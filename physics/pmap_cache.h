#pragma once
#include <cstdint>
#include <string>

namespace phys {
class TriangleMesh;
}

// The cache file of a mesh's collision map, named after its vertex and triangle counts; it
// lies in the working directory. Different meshes with the same counts share a name.
std::string PMapFileName(uint32_t numVertices, uint32_t numTriangles);

enum class PMapSource {
    File,      // read from the cache
    Computed,  // computed now (and stored, where the folder allows)
    None,      // the mesh has no piece to collide with
};

// Gives the mesh its collision map: from the cache file when that holds a valid map of this
// very mesh, otherwise computed at density 64. A missing or damaged file is (re)written; a
// valid map of another mesh with the same name is left for that mesh. A folder that cannot
// be written is skipped without a word.
PMapSource AttachCachedPMap(phys::TriangleMesh& mesh);
