#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/vector3.h"

struct TexCoord {
    float u, v;
};

// Vertex indices, counter-clockwise seen from the front.
struct Triangle {
    uint32_t a, b, c;
};

// These arrays go to OpenGL and the physics layer as raw arrays, so they must stay packed.
static_assert(sizeof(Vector3) == 12, "vertices are handed on with a stride of 12 bytes");
static_assert(sizeof(TexCoord) == 8, "texture coordinates are handed on with a stride of 8 bytes");
static_assert(sizeof(Triangle) == 12, "triangles are handed on with a stride of 12 bytes");

// What a renderer keeps for one sub-model (its arrays uploaded to the graphics card). It goes
// with the sub-model, so whatever it holds is freed when the model is destroyed.
class SubModelDrawData {
public:
    virtual ~SubModelDrawData() = default;
};

// One mesh of a model: its own vertices, indexed from 0 by its own triangles.
class SubModel {
public:
    SubModel() = default;
    SubModel(const SubModel&) = default;
    SubModel(SubModel&&) noexcept = default;
    SubModel& operator=(const SubModel&) = default;
    SubModel& operator=(SubModel&&) noexcept = default;
    virtual ~SubModel() = default;

    void AddVertex(float x, float y, float z) { vertices.emplace_back(x, y, z); }
    void AddNormal(float x, float y, float z) { normals.emplace_back(x, y, z); }
    void AddTexCoord(float u, float v) { texCoords.push_back({u, v}); }
    void AddTriangle(uint32_t a, uint32_t b, uint32_t c) { triangles.push_back({a, b, c}); }

    // How the renderer draws it: 0 one vertex at a time, 1 from the arrays in memory, 2 from
    // buffers on the graphics card, made on the first draw.
    int renderMode = 1;
    std::shared_ptr<SubModelDrawData> drawData;  // the renderer's; null until it is drawn
    std::vector<Vector3> vertices;
    std::vector<Vector3> normals;
    std::vector<Vector3> tangents;
    std::vector<TexCoord> texCoords;
    std::vector<Triangle> triangles;
};

// A set of sub-models. A plain Model is built in code; file formats derive from it.
class Model {
public:
    virtual ~Model() = default;

    // A plain Model has no file format.
    virtual bool Load(const std::string& path);
    virtual bool Save(const std::string& path);

    // Moves every vertex of every sub-model; normals are directions and stay as they are.
    void Translate(float x, float y, float z);
    size_t GetSubModelCount() const { return subModels.size(); }
    SubModel& GetSubModel(size_t index) { return subModels.at(index); }
    const SubModel& GetSubModel(size_t index) const { return subModels.at(index); }
    // Appends an empty sub-model drawn the way this model is. The reference lasts until the
    // next AddSubModel.
    SubModel& AddSubModel();
    // Replaces every sub-model's normals with the normalised sum of the unit normals of the
    // faces around each vertex. Every face counts the same whatever its area; vertices that
    // share a position but not an index are not merged.
    void ComputeNormals();

    int renderMode = 1;
    std::vector<SubModel> subModels;
};
