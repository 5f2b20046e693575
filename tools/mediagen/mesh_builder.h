#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "core/vector3.h"
#include "tools/mediagen/max_writer.h"
#include "tools/mediagen/polygon.h"

namespace mediagen {

// Builds one 3DS object out of simple solids, every face counter-clockwise seen from outside.
// The reader computes normals from the faces around each vertex, so a crease is made by giving
// each side of it its own vertices and a smooth surface by sharing them.
class MeshBuilder {
public:
    explicit MeshBuilder(std::string name) { object_.name = std::move(name); }

    // Throws MediaError once the object would need more vertices than a 3DS list holds.
    uint16_t Vertex(Vector3 position, float u, float v);
    void Triangle(uint16_t a, uint16_t b, uint16_t c) { object_.faces.push_back({a, b, c}); }

    // A solid of revolution about the z axis through `centre`. Each strand is a smooth run of
    // (r, z) points, and together the strands go counter-clockwise round the solid's cross
    // section (r to the right, z up): out along the bottom, up the outside, in across the top.
    // A point with r = 0 closes the surface on the axis; a strand whose last point is its first
    // is a closed loop (a torus's tube). Within a strand every vertex is shared all the way
    // round, so the reader's normals are smooth with no seam; strands meet in a crease.
    // Texture: u runs 0 to 1 and back round the axis, v along the strand.
    void Lathe(const std::vector<std::vector<Point2>>& strands, int segments, Vector3 centre = {0, 0, 0});

    // A straight prism from z0 to z1 over an outline in either direction, with flat caps and a
    // crease at every corner. Sides are cut into pieces no longer than maxSide. Texture: caps
    // u = x / tile, v = y / tile; sides u = distance along the outline / tile, v = z / tile.
    void Prism(const std::vector<Point2>& outline, float z0, float z1, float tile, double maxSide);

    // A prism like the one above with its edges chamfered by `bevel`: the outline's corners
    // keep their creases, and the front cap (and the back when bevelBack) is the outline moved
    // in by `bevel`, joined to the side walls by a sloping strip. The outline must stay simple
    // when moved in, so its features must be wider than twice the bevel.
    void BevelledPrism(const std::vector<Point2>& outline, float z0, float z1, float bevel, bool bevelBack, float tile);

    // A box from `low` to `high` with every edge chamfered by `bevel` (0 for sharp edges).
    void Box(Vector3 low, Vector3 high, float tile, float bevel = 0);

    // A sphere of flat triangles: an octahedron whose faces are split `splits` times over and
    // pushed out to the sphere, so its six tips lie exactly at +-radius on the axes.
    void FacetedSphere(Vector3 centre, float radius, int splits);

    const MaxObject& Object() const { return object_; }
    MaxObject Take() { return std::move(object_); }

private:
    MaxObject object_;
};

}  // namespace mediagen
