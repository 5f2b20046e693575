#pragma once
#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace mediagen {

// A point in the plane of play, or (r, z) in a lathe profile.
struct Point2 {
    double x = 0;
    double y = 0;
};

// Twice the enclosed area, positive for a counter-clockwise outline.
double SignedArea2(const std::vector<Point2>& outline);

// "" for a simple outline (no zero-length edge, no two edges touching except neighbours at
// their shared corner, some area); otherwise what is wrong, naming points from 1.
std::string OutlineProblem(const std::vector<Point2>& outline);

// The outline with points added along each edge, evenly, so that no piece is longer than
// maxLength; the given points stay, in order, the first still first. cornerAt, when given,
// receives where each given point landed.
std::vector<Point2> SplitEdges(const std::vector<Point2>& outline, double maxLength,
                               std::vector<size_t>* cornerAt = nullptr);

// A counter-clockwise outline with every edge moved inwards by `distance`, corners mitred.
// Only simple again when every feature of the outline is wider than twice the distance.
std::vector<Point2> Inset(const std::vector<Point2>& outline, double distance);

struct Triangulation {
    std::vector<Point2> points;  // the outline's points, then any points added inside
    std::vector<std::array<size_t, 3>> triangles;  // counter-clockwise
};

// Triangulates a simple counter-clockwise outline by ear clipping. Points that lie on a
// straight edge are corners of the triangles beside them, so a cap meets side walls built
// on the same points without cracks. Empty when no ear can be found (only for outlines that
// OutlineProblem rejects, or ones too thin to tell apart in double precision).
Triangulation Triangulate(const std::vector<Point2>& outline);

}  // namespace mediagen
