#include "tools/mediagen/polygon.h"

#include <algorithm>
#include <cmath>

namespace mediagen {

namespace {

double Cross(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

double Dot(const Point2& a, const Point2& b, const Point2& c) {
    return (b.x - a.x) * (c.x - b.x) + (b.y - a.y) * (c.y - b.y);
}

// Cross products smaller than this count as zero: outlines are a few hundred units across,
// so only rounding is ever this small.
double Tolerance(const std::vector<Point2>& points) {
    double extent = 1;
    for (const Point2& p : points) extent = std::max({extent, std::abs(p.x), std::abs(p.y)});
    return extent * extent * 1e-10;
}

bool OnSegment(const Point2& a, const Point2& b, const Point2& p, double eps) {
    return std::abs(Cross(a, b, p)) <= eps && std::min(a.x, b.x) - 1e-9 <= p.x && p.x <= std::max(a.x, b.x) + 1e-9 &&
           std::min(a.y, b.y) - 1e-9 <= p.y && p.y <= std::max(a.y, b.y) + 1e-9;
}

// Touching counts as crossing.
bool SegmentsMeet(const Point2& a, const Point2& b, const Point2& c, const Point2& d, double eps) {
    const double d1 = Cross(a, b, c), d2 = Cross(a, b, d), d3 = Cross(c, d, a), d4 = Cross(c, d, b);
    if (((d1 > eps && d2 < -eps) || (d1 < -eps && d2 > eps)) && ((d3 > eps && d4 < -eps) || (d3 < -eps && d4 > eps))) {
        return true;
    }
    return OnSegment(a, b, c, eps) || OnSegment(a, b, d, eps) || OnSegment(c, d, a, eps) || OnSegment(c, d, b, eps);
}

bool InOrOnTriangle(const Point2& a, const Point2& b, const Point2& c, const Point2& p, double eps) {
    return Cross(a, b, p) >= -eps && Cross(b, c, p) >= -eps && Cross(c, a, p) >= -eps;
}

std::string Edge(size_t i, size_t n) { return std::to_string(i + 1) + "-" + std::to_string((i + 1) % n + 1); }

// Ear clipping over the corners only; straight points are dealt with afterwards.
bool ClipEars(const std::vector<Point2>& points, std::vector<size_t> ring, double eps,
              std::vector<std::array<size_t, 3>>& ears) {
    while (ring.size() > 3) {
        const size_t m = ring.size();
        bool clipped = false;
        for (size_t k = 0; k < m && !clipped; ++k) {
            const size_t a = ring[(k + m - 1) % m], b = ring[k], c = ring[(k + 1) % m];
            if (Cross(points[a], points[b], points[c]) <= eps) continue;
            const bool blocked = std::any_of(ring.begin(), ring.end(), [&](size_t q) {
                return q != a && q != b && q != c && InOrOnTriangle(points[a], points[b], points[c], points[q], eps);
            });
            if (blocked) continue;
            ears.push_back({a, b, c});
            ring.erase(ring.begin() + std::ptrdiff_t(k));
            clipped = true;
        }
        if (!clipped) return false;
    }
    if (Cross(points[ring[0]], points[ring[1]], points[ring[2]]) <= eps) return false;
    ears.push_back({ring[0], ring[1], ring[2]});
    return true;
}

}  // namespace

double SignedArea2(const std::vector<Point2>& outline) {
    double sum = 0;
    for (size_t i = 0; i < outline.size(); ++i) {
        const Point2& a = outline[i];
        const Point2& b = outline[(i + 1) % outline.size()];
        sum += a.x * b.y - b.x * a.y;
    }
    return sum;
}

std::string OutlineProblem(const std::vector<Point2>& outline) {
    const size_t n = outline.size();
    if (n < 3) return "an outline needs at least 3 points, this one has " + std::to_string(n);
    const double eps = Tolerance(outline);
    for (size_t i = 0; i < n; ++i) {
        const Point2& a = outline[i];
        const Point2& b = outline[(i + 1) % n];
        if (std::hypot(b.x - a.x, b.y - a.y) < 1e-6) return "edge " + Edge(i, n) + " has no length";
    }
    for (size_t i = 0; i < n; ++i) {
        const Point2& a = outline[(i + n - 1) % n];
        const Point2& b = outline[i];
        const Point2& c = outline[(i + 1) % n];
        if (std::abs(Cross(a, b, c)) <= eps && Dot(a, b, c) < 0) {
            return "the outline turns back on itself at point " + std::to_string(i + 1);
        }
    }
    for (size_t i = 0; i < n; ++i) {
        for (size_t j = i + 2; j < n; ++j) {
            if (i == 0 && j == n - 1) continue;  // neighbours through the closing edge
            if (SegmentsMeet(outline[i], outline[(i + 1) % n], outline[j], outline[(j + 1) % n], eps)) {
                return "edges " + Edge(i, n) + " and " + Edge(j, n) + " cross or touch";
            }
        }
    }
    if (std::abs(SignedArea2(outline)) <= eps) return "the outline encloses no area";
    return "";
}

std::vector<Point2> SplitEdges(const std::vector<Point2>& outline, double maxLength, std::vector<size_t>* cornerAt) {
    std::vector<Point2> out;
    if (cornerAt) cornerAt->clear();
    for (size_t i = 0; i < outline.size(); ++i) {
        if (cornerAt) cornerAt->push_back(out.size());
        const Point2& a = outline[i];
        const Point2& b = outline[(i + 1) % outline.size()];
        const int pieces = std::max(1, int(std::ceil(std::hypot(b.x - a.x, b.y - a.y) / maxLength - 1e-9)));
        for (int k = 0; k < pieces; ++k) {
            const double t = double(k) / pieces;
            out.push_back({a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t});
        }
    }
    return out;
}

std::vector<Point2> Inset(const std::vector<Point2>& outline, double distance) {
    const size_t n = outline.size();
    std::vector<Point2> inside;
    for (size_t i = 0; i < n; ++i) {
        const Point2& a = outline[(i + n - 1) % n];
        const Point2& b = outline[i];
        const Point2& c = outline[(i + 1) % n];
        // The inward normals of the edges before and after b: left of the direction of travel.
        const double l1 = std::hypot(b.x - a.x, b.y - a.y), l2 = std::hypot(c.x - b.x, c.y - b.y);
        const Point2 n1{-(b.y - a.y) / l1, (b.x - a.x) / l1}, n2{-(c.y - b.y) / l2, (c.x - b.x) / l2};
        const double scale = distance / (1 + n1.x * n2.x + n1.y * n2.y);
        inside.push_back({b.x + (n1.x + n2.x) * scale, b.y + (n1.y + n2.y) * scale});
    }
    return inside;
}

Triangulation Triangulate(const std::vector<Point2>& outline) {
    Triangulation out{outline, {}};
    const size_t n = outline.size();
    const double eps = Tolerance(outline);
    std::vector<size_t> corners;
    for (size_t i = 0; i < n; ++i) {
        if (std::abs(Cross(outline[(i + n - 1) % n], outline[i], outline[(i + 1) % n])) > eps) corners.push_back(i);
    }
    std::vector<std::array<size_t, 3>> ears;
    if (corners.size() < 3 || !ClipEars(outline, corners, eps, ears)) return out;

    // The points strictly between a corner and the next one along the outline.
    std::vector<size_t> nextCorner(n, 0);
    for (size_t k = 0; k < corners.size(); ++k) nextCorner[corners[k]] = corners[(k + 1) % corners.size()];
    auto between = [&](size_t from, size_t to) {
        std::vector<size_t> run;
        if (nextCorner[from] != to) return run;  // a diagonal
        for (size_t i = (from + 1) % n; i != to; i = (i + 1) % n) run.push_back(i);
        return run;
    };

    for (const auto& ear : ears) {
        std::vector<size_t> loop;
        std::array<bool, 3> straightAfter{};  // whether edge k (ear[k] to ear[k+1]) has points on it
        for (size_t k = 0; k < 3; ++k) {
            loop.push_back(ear[k]);
            const std::vector<size_t> run = between(ear[k], ear[(k + 1) % 3]);
            straightAfter[k] = !run.empty();
            loop.insert(loop.end(), run.begin(), run.end());
        }
        if (loop.size() == 3) {
            out.triangles.push_back(ear);
            continue;
        }
        // Fan from a corner with no points on its own edges; failing that, from the middle.
        size_t hub = 3;
        for (size_t k = 0; k < 3 && hub == 3; ++k) {
            if (!straightAfter[k] && !straightAfter[(k + 2) % 3]) hub = k;
        }
        if (hub < 3) {
            const auto at = std::find(loop.begin(), loop.end(), ear[hub]);
            std::rotate(loop.begin(), at, loop.end());
            for (size_t i = 1; i + 1 < loop.size(); ++i) out.triangles.push_back({loop[0], loop[i], loop[i + 1]});
        } else {
            const Point2 &a = outline[ear[0]], &b = outline[ear[1]], &c = outline[ear[2]];
            out.points.push_back({(a.x + b.x + c.x) / 3, (a.y + b.y + c.y) / 3});
            const size_t centre = out.points.size() - 1;
            for (size_t i = 0; i < loop.size(); ++i) {
                out.triangles.push_back({centre, loop[i], loop[(i + 1) % loop.size()]});
            }
        }
    }
    return out;
}

}  // namespace mediagen
