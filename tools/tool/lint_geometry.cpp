#include "tools/tool/lint_geometry.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace lint {
namespace {

Point Minus(const Point& a, const Point& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Point Along(const Point& from, const Point& direction, double t) {
    return {from.x + direction.x * t, from.y + direction.y * t, from.z + direction.z * t};
}
double Dot(const Point& a, const Point& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double Distance(const Point& a, const Point& b) {
    const Point d = Minus(a, b);
    return std::sqrt(Dot(d, d));
}

double SegmentDistance(const Point& p, const Point& a, const Point& b) {
    const Point ab = Minus(b, a);
    const double length2 = Dot(ab, ab);
    const double t = length2 > 0 ? std::clamp(Dot(Minus(p, a), ab) / length2, 0.0, 1.0) : 0.0;
    return Distance(p, Along(a, ab, t));
}

// Finds the triangle's nearest feature to p, vertex, edge or face, by its Voronoi regions as
// in Ericson's Real-Time Collision Detection, 5.1.5. The face's distance is measured along its
// normal rather than through barycentric weights, whose divisor could round to 0.
double DistanceByRegion(const Point& p, const Point& a, const Point& b, const Point& c, const Point& normal) {
    const Point ab = Minus(b, a), ac = Minus(c, a), ap = Minus(p, a);
    const double d1 = Dot(ab, ap), d2 = Dot(ac, ap);
    if (d1 <= 0 && d2 <= 0) return Distance(p, a);
    const Point bp = Minus(p, b);
    const double d3 = Dot(ab, bp), d4 = Dot(ac, bp);
    if (d3 >= 0 && d4 <= d3) return Distance(p, b);
    const double vc = d1 * d4 - d3 * d2;
    if (vc <= 0 && d1 >= 0 && d3 <= 0) return Distance(p, Along(a, ab, d1 / (d1 - d3)));
    const Point cp = Minus(p, c);
    const double d5 = Dot(ab, cp), d6 = Dot(ac, cp);
    if (d6 >= 0 && d5 <= d6) return Distance(p, c);
    const double vb = d5 * d2 - d1 * d6;
    if (vb <= 0 && d2 >= 0 && d6 <= 0) return Distance(p, Along(a, ac, d2 / (d2 - d6)));
    const double va = d3 * d6 - d5 * d4;
    if (va <= 0 && d4 - d3 >= 0 && d5 - d6 >= 0) {
        return Distance(p, Along(b, Minus(c, b), (d4 - d3) / ((d4 - d3) + (d5 - d6))));
    }
    return std::fabs(Dot(ap, normal)) / std::sqrt(Dot(normal, normal));
}

// Box indices in the order of their left edges.
std::vector<size_t> ByLeft(const std::vector<PlaneBox>& boxes) {
    std::vector<size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t i, size_t j) { return boxes[i].left < boxes[j].left; });
    return order;
}

// For each box of `from`, visits the boxes of `to` whose left edge lies within its x extent:
// at or after its own left edge, or strictly after it when `strict`, so that two sweeps in
// opposite directions find every overlapping pair exactly once.
template <class Visit>
void Sweep(const std::vector<PlaneBox>& from, const std::vector<PlaneBox>& to, const std::vector<size_t>& toByLeft,
           bool strict, Visit visit) {
    for (size_t i = 0; i < from.size(); ++i) {
        const PlaneBox& box = from[i];
        auto start = std::partition_point(toByLeft.begin(), toByLeft.end(), [&](size_t j) {
            return strict ? to[j].left <= box.left : to[j].left < box.left;
        });
        for (auto it = start; it != toByLeft.end() && to[*it].left <= box.right; ++it) {
            const PlaneBox& other = to[*it];
            if (other.bottom <= box.top && box.bottom <= other.top) visit(i, *it);
        }
    }
}

}  // namespace

double TriangleDistance(const Point& p, const Point& a, const Point& b, const Point& c) {
    const Point ab = Minus(b, a), ac = Minus(c, a);
    const Point normal{ab.y * ac.z - ab.z * ac.y, ab.z * ac.x - ab.x * ac.z, ab.x * ac.y - ab.y * ac.x};
    // The regions' divisors are squared edge lengths, never 0 while the triangle has an area.
    if (Dot(normal, normal) > 0) return DistanceByRegion(p, a, b, c, normal);
    return std::min({SegmentDistance(p, a, b), SegmentDistance(p, b, c), SegmentDistance(p, c, a)});
}

void ForEachOverlap(const std::vector<PlaneBox>& a, const std::vector<PlaneBox>& b,
                    const std::function<void(size_t, size_t)>& visit) {
    // Of two overlapping boxes, one's left edge lies within the other's x extent: a pair is
    // found from the box whose left edge comes first (from a's side when they are equal).
    Sweep(a, b, ByLeft(b), false, visit);
    Sweep(b, a, ByLeft(a), true, [&](size_t j, size_t i) { visit(i, j); });
}

}  // namespace lint
