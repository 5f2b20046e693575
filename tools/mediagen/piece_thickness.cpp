#include "tools/mediagen/piece_thickness.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace mediagen {

namespace {

// Samples every 0.1 units along the outline, fewer on huge outlines: each sample is tested
// against every edge, and the work stays under this many tests (about a second).
constexpr double kFinestStep = 0.1;
constexpr double kMaxRayTests = 2e8;

// Distance along the ray from `from` in direction `dir` (unit) to segment a-b, or infinity.
double RayHit(Point2 from, Point2 dir, Point2 a, Point2 b) {
    const Point2 e{b.x - a.x, b.y - a.y};
    const double denom = dir.x * e.y - dir.y * e.x;
    if (std::fabs(denom) < 1e-12) return std::numeric_limits<double>::infinity();
    const Point2 w{a.x - from.x, a.y - from.y};
    const double t = (w.x * e.y - w.y * e.x) / denom;
    const double s = (w.x * dir.y - w.y * dir.x) / denom;
    if (t <= 0 || s < -1e-9 || s > 1 + 1e-9) return std::numeric_limits<double>::infinity();
    return t;
}

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g", value);
    return text;
}

}  // namespace

std::string ThinPart(const std::vector<Point2>& outline, double minimum) {
    const size_t n = outline.size();
    double perimeter = 0;
    for (size_t i = 0; i < n; ++i)
        perimeter += std::hypot(outline[(i + 1) % n].x - outline[i].x, outline[(i + 1) % n].y - outline[i].y);
    const double step = std::max(kFinestStep, perimeter * double(n) / kMaxRayTests);
    double thinnest = std::numeric_limits<double>::infinity();
    Point2 where{};
    size_t edgeAt = 0;
    for (size_t i = 0; i < n; ++i) {
        const Point2 a = outline[i], b = outline[(i + 1) % n];
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        if (length <= 0) continue;
        const Point2 dir{(b.x - a.x) / length, (b.y - a.y) / length};
        const Point2 inward{-dir.y, dir.x};  // the inside is on the left of a counter-clockwise outline
        std::vector<double> along{length / 2};
        const double first = minimum / 2, last = length - minimum / 2;
        if (last > first) {
            const size_t count = size_t((last - first) / step) + 1;
            for (size_t k = 0; k <= count; ++k) along.push_back(first + (last - first) * double(k) / double(count));
        }
        for (double d : along) {
            const Point2 p{a.x + dir.x * d, a.y + dir.y * d};
            for (size_t j = 0; j < n; ++j) {
                if (j == i) continue;
                const double t = RayHit(p, inward, outline[j], outline[(j + 1) % n]);
                if (t < thinnest) {
                    thinnest = t;
                    where = p;
                    edgeAt = i;
                }
            }
        }
    }
    if (thinnest >= minimum - 1e-9) return "";
    return "only " + Number(thinnest) + " thick at (" + Number(where.x) + ", " + Number(where.y) + "), across from the edge from point " +
           std::to_string(edgeAt + 1) + " to point " + std::to_string((edgeAt + 1) % n + 1) +
           "; a piece must be at least " + Number(minimum) +
           " thick everywhere, sharp tips included, or fast balls pass through it";
}

}  // namespace mediagen
