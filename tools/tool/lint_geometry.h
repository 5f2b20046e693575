#pragma once
// Geometry for the lint's placement checks, in double precision: level numbers may sit near
// the ends of float's range, where float arithmetic would overflow.
#include <cstddef>
#include <functional>
#include <vector>

namespace lint {

struct Point {
    double x, y, z;
};

// The distance from p to the nearest point of triangle abc. Exact for any triangle, including
// one with no area (then a segment or a point).
double TriangleDistance(const Point& p, const Point& a, const Point& b, const Point& c);

// An axis-aligned box in the plane of play; the values must be finite.
struct PlaneBox {
    double left, right, bottom, top;
};

// Calls visit(i, j) once for each pair of boxes a[i] and b[j] that overlap or touch. Sorts
// along x and sweeps, so it costs n log n plus the pairs whose x extents overlap rather than
// every pair. For the pairs within one list, pass it as both and keep the calls with i < j.
void ForEachOverlap(const std::vector<PlaneBox>& a, const std::vector<PlaneBox>& b,
                    const std::function<void(size_t, size_t)>& visit);

}  // namespace lint
