#include "formats/model.h"

bool Model::Load(const std::string&) { return false; }

bool Model::Save(const std::string&) { return false; }

void Model::Translate(float x, float y, float z) {
    const Vector3 offset{x, y, z};
    for (SubModel& sub : subModels) {
        for (Vector3& vertex : sub.vertices) vertex += offset;
    }
}

SubModel& Model::AddSubModel() {
    SubModel& sub = subModels.emplace_back();
    sub.renderMode = renderMode;
    return sub;
}

void Model::ComputeNormals() {
    for (SubModel& sub : subModels) {
        const std::vector<Vector3>& v = sub.vertices;
        sub.normals.assign(v.size(), Vector3{0, 0, 0});
        for (const Triangle& t : sub.triangles) {
            // Loaders reject such triangles; a model built in code gets no normal from them
            // rather than a write out of bounds.
            if (t.a >= v.size() || t.b >= v.size() || t.c >= v.size()) continue;
            Vector3 n = (v[t.a] - v[t.c]).Cross(v[t.b] - v[t.c]);
            n.Normalize();
            sub.normals[t.a] += n;
            sub.normals[t.b] += n;
            sub.normals[t.c] += n;
        }
        for (Vector3& normal : sub.normals) normal.Normalize();
    }
}
