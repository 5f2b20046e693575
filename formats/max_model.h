#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "formats/model.h"

// A model read from a 3DS file: one sub-model for each named object that holds a triangle
// mesh, in file order. Lights, cameras and materials are skipped.
class MaxModel : public Model {
public:
    MaxModel() { renderMode = 2; }

    // Adds the file's meshes and recomputes the normals. On failure the meshes read so far stay
    // in the model, which should be thrown away; LoadError() then says why.
    bool Load(const std::string& path) override;
    // The same on a file already in memory; name stands for the file in LoadError().
    bool LoadBytes(std::span<const uint8_t> bytes, const std::string& name);
    // Names the file and the reason, e.g. "Media/x.3DS: face 3 uses vertex 17 but the mesh
    // has 12 vertices". Empty after a successful load.
    const std::string& LoadError() const { return loadError_; }

private:
    std::string loadError_;
};
