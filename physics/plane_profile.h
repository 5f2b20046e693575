#pragma once
#include <cstdint>
#include <memory>
#include <vector>

namespace phys {

// Where a track mesh cuts the plane z = 0, as straight segments, for balls that stay in that
// plane. Tracks are outlines drawn out along z: near the plane every triangle is an upright
// wall, and anything else (caps, bevels) lies at least `Clearance()` away from it. For a ball
// smaller than that, touching the mesh is touching the segments, which is much cheaper than
// touching triangles. Runs of segments along one line are merged, so a ball rolling along a
// wall meets no seam where its triangles meet.
class PlaneProfile {
public:
    struct Segment {
        float ax, ay, bx, by;
    };

    // Null when the mesh is no such outline: a sloping triangle crosses the plane, or no wall
    // does, or the walls change along z (a ball would touch them off the plane).
    static std::unique_ptr<PlaneProfile> Build(const std::vector<float>& points, const std::vector<uint32_t>& indices);

    // How far from the plane the first triangle that is no wall through it lies.
    float Clearance() const { return clearance; }
    const std::vector<Segment>& Segments() const { return segments; }

    // The segments whose bounds meet the box, each once, in index order.
    void Near(float minX, float minY, float maxX, float maxY, std::vector<uint32_t>& found) const;

private:
    void BuildGrid();

    std::vector<Segment> segments;
    float clearance = 0;
    // A uniform grid over the segments' bounds: cell (i, j) lists the segments crossing it.
    float originX = 0, originY = 0, cell = 1;
    int columns = 0, rows = 0;
    std::vector<uint32_t> cellStart;  // columns * rows + 1 offsets into cellItems
    std::vector<uint32_t> cellItems;
    mutable std::vector<uint32_t> seen;  // per segment: the query that last found it
    mutable uint32_t query = 0;
};

}  // namespace phys
