// Any bytes as a 3DS model. The reader refuses them with a reason, or gives meshes that the
// renderer and the physics can index without looking: every triangle is walked through its
// vertices and normals here.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "formats/max_model.h"
#include "tests/fuzz/fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string name = "fuzz.3DS";
    MaxModel model;
    if (!model.LoadBytes(std::span<const uint8_t>(data, size), name)) {
        Require(model.LoadError().rfind(name + ": ", 0) == 0, "a refused model gets an error naming the file");
        return 0;
    }
    Require(model.LoadError().empty(), "a model that loads leaves no error");

    float sum = 0;
    for (const SubModel& sub : model.subModels) {
        Require(sub.normals.size() == sub.vertices.size(), "every vertex has a normal");
        for (const Triangle& t : sub.triangles) {
            for (uint32_t index : {t.a, t.b, t.c}) {
                Require(index < sub.vertices.size(), "triangles use only the mesh's own vertices");
                const Vector3& v = sub.vertices[index];
                const Vector3& n = sub.normals[index];
                sum += v.x + v.y + v.z + n.x + n.y + n.z;
            }
        }
    }
    // Kept, so the walk over every vertex is not optimised away.
    volatile float sink = sum;
    (void)sink;
    return 0;
}
