#include "physics/plane_profile.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace phys {

namespace {

// A triangle whose normal leans out of the plane by less than this is an upright wall.
constexpr float kUpright = 1e-4f;
// Points closer than this are one point; lines closer than this are one line.
constexpr float kSame = 1e-3f;
// The grid has at most this many cells along a side.
constexpr int kMaxCells = 128;

struct Point2 {
    float x, y;
};

// The segment's line: where it starts, its unit direction and its length.
struct Line {
    Point2 origin, dir;
    float length;
};

Line LineOf(const PlaneProfile::Segment& s) {
    const float dx = s.bx - s.ax, dy = s.by - s.ay;
    const float length = std::hypot(dx, dy);
    return {{s.ax, s.ay}, {dx / length, dy / length}, length};
}

float Along(const Line& line, Point2 p) { return (p.x - line.origin.x) * line.dir.x + (p.y - line.origin.y) * line.dir.y; }
float Across(const Line& line, Point2 p) {
    return std::abs((p.x - line.origin.x) * line.dir.y - (p.y - line.origin.y) * line.dir.x);
}

// A wall triangle's cut through z = 0, and how far it reaches along its line at any height.
struct Wall {
    PlaneProfile::Segment cut;
    Point2 reach[2];
};

// The cut of an upright triangle that crosses z = 0; false when it only touches the plane.
bool CutWall(const float* p[3], Wall& wall) {
    Point2 on[6];
    int count = 0;
    for (int i = 0; i < 3; ++i) {
        const float* a = p[i];
        const float* b = p[(i + 1) % 3];
        if (a[2] == 0) on[count++] = {a[0], a[1]};
        if ((a[2] < 0 && b[2] > 0) || (a[2] > 0 && b[2] < 0)) {
            const float t = a[2] / (a[2] - b[2]);
            on[count++] = {a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])};
        }
    }
    // The triangle's own direction in the plane: its longest side seen from above.
    float dx = 0, dy = 0;
    for (int i = 0; i < 3; ++i) {
        const float ex = p[(i + 1) % 3][0] - p[i][0], ey = p[(i + 1) % 3][1] - p[i][1];
        if (ex * ex + ey * ey > dx * dx + dy * dy) dx = ex, dy = ey;
    }
    const float length = std::hypot(dx, dy);
    if (count < 2 || length < kSame) return false;
    dx /= length;
    dy /= length;
    const auto extremes = [dx, dy](const Point2* points, int n, Point2& low, Point2& high) {
        float lowT = std::numeric_limits<float>::max(), highT = -lowT;
        low = high = points[0];
        for (int i = 0; i < n; ++i) {
            const float t = points[i].x * dx + points[i].y * dy;
            if (t < lowT) lowT = t, low = points[i];
            if (t > highT) highT = t, high = points[i];
        }
        return highT - lowT;
    };
    Point2 low{0, 0}, high{0, 0};
    if (extremes(on, count, low, high) < kSame) return false;
    wall.cut = {low.x, low.y, high.x, high.y};
    const Point2 corners[3] = {{p[0][0], p[0][1]}, {p[1][0], p[1][1]}, {p[2][0], p[2][1]}};
    extremes(corners, 3, wall.reach[0], wall.reach[1]);
    return true;
}

// Joins segments that lie on one line and overlap or meet, until none do.
std::vector<PlaneProfile::Segment> Merge(std::vector<PlaneProfile::Segment> segments) {
    bool merged = true;
    while (merged) {
        merged = false;
        for (size_t i = 0; i < segments.size(); ++i) {
            for (size_t j = i + 1; j < segments.size(); ++j) {
                const Line line = LineOf(segments[i]);
                const Point2 a{segments[j].ax, segments[j].ay}, b{segments[j].bx, segments[j].by};
                if (Across(line, a) > kSame || Across(line, b) > kSame) continue;
                const float ta = Along(line, a), tb = Along(line, b);
                const float low = std::min(ta, tb), high = std::max(ta, tb);
                if (low > line.length + kSame || high < -kSame) continue;
                const float from = std::min(0.0f, low), to = std::max(line.length, high);
                segments[i] = {line.origin.x + from * line.dir.x, line.origin.y + from * line.dir.y,
                               line.origin.x + to * line.dir.x, line.origin.y + to * line.dir.y};
                segments.erase(segments.begin() + long(j));
                merged = true;
                --j;
            }
        }
    }
    return segments;
}

// Whether a point of a wall lies on one of the merged segments.
bool Covered(const std::vector<PlaneProfile::Segment>& segments, Point2 p) {
    for (const PlaneProfile::Segment& s : segments) {
        const Line line = LineOf(s);
        const float t = Along(line, p);
        if (Across(line, p) <= kSame && t >= -kSame && t <= line.length + kSame) return true;
    }
    return false;
}

}  // namespace

std::unique_ptr<PlaneProfile> PlaneProfile::Build(const std::vector<float>& points,
                                                  const std::vector<uint32_t>& indices) {
    auto profile = std::unique_ptr<PlaneProfile>(new PlaneProfile());
    profile->clearance = std::numeric_limits<float>::max();
    std::vector<Wall> walls;
    for (size_t t = 0; t + 2 < indices.size(); t += 3) {
        const float* p[3];
        for (int k = 0; k < 3; ++k) {
            if (size_t(indices[t + k]) * 3 + 2 >= points.size()) return nullptr;
            p[k] = &points[size_t(indices[t + k]) * 3];
        }
        const float low = std::min({p[0][2], p[1][2], p[2][2]}), high = std::max({p[0][2], p[1][2], p[2][2]});
        if (low > 0 || high < 0) {
            profile->clearance = std::min(profile->clearance, low > 0 ? low : -high);
            continue;
        }
        const float ux = p[1][0] - p[0][0], uy = p[1][1] - p[0][1], uz = p[1][2] - p[0][2];
        const float vx = p[2][0] - p[0][0], vy = p[2][1] - p[0][1], vz = p[2][2] - p[0][2];
        const float nx = uy * vz - uz * vy, ny = uz * vx - ux * vz, nz = ux * vy - uy * vx;
        const float n = std::sqrt(nx * nx + ny * ny + nz * nz);
        if (!(n > 0)) continue;  // a collapsed triangle has no surface to touch
        if (std::abs(nz) > kUpright * n) return nullptr;
        Wall wall;
        if (CutWall(p, wall)) walls.push_back(wall);
    }
    if (walls.empty()) return nullptr;
    std::vector<Segment> cuts;
    for (const Wall& wall : walls) cuts.push_back(wall.cut);
    profile->segments = Merge(std::move(cuts));
    // A wall reaching further along its line above or below the plane than in it is no
    // outline drawn out straight: a ball could touch it off the plane.
    for (const Wall& wall : walls)
        if (!Covered(profile->segments, wall.reach[0]) || !Covered(profile->segments, wall.reach[1])) return nullptr;
    profile->BuildGrid();
    return profile;
}

void PlaneProfile::BuildGrid() {
    float minX = std::numeric_limits<float>::max(), minY = minX, maxX = -minX, maxY = -minX;
    for (const Segment& s : segments) {
        minX = std::min({minX, s.ax, s.bx});
        maxX = std::max({maxX, s.ax, s.bx});
        minY = std::min({minY, s.ay, s.by});
        maxY = std::max({maxY, s.ay, s.by});
    }
    originX = minX;
    originY = minY;
    cell = std::max({1.0f, (maxX - minX) / kMaxCells, (maxY - minY) / kMaxCells});
    columns = int((maxX - minX) / cell) + 1;
    rows = int((maxY - minY) / cell) + 1;
    const auto cellsOf = [this](const Segment& s, int& i0, int& j0, int& i1, int& j1) {
        i0 = int((std::min(s.ax, s.bx) - originX) / cell);
        i1 = std::min(columns - 1, int((std::max(s.ax, s.bx) - originX) / cell));
        j0 = int((std::min(s.ay, s.by) - originY) / cell);
        j1 = std::min(rows - 1, int((std::max(s.ay, s.by) - originY) / cell));
    };
    std::vector<uint32_t> counts(size_t(columns) * rows + 1, 0);
    for (const Segment& s : segments) {
        int i0, j0, i1, j1;
        cellsOf(s, i0, j0, i1, j1);
        for (int j = j0; j <= j1; ++j)
            for (int i = i0; i <= i1; ++i) ++counts[size_t(j) * columns + i];
    }
    cellStart.assign(counts.size(), 0);
    for (size_t c = 1; c < counts.size(); ++c) cellStart[c] = cellStart[c - 1] + counts[c - 1];
    cellItems.assign(cellStart.back(), 0);
    std::vector<uint32_t> fill(cellStart.begin(), cellStart.end() - 1);
    for (uint32_t index = 0; index < segments.size(); ++index) {
        int i0, j0, i1, j1;
        cellsOf(segments[index], i0, j0, i1, j1);
        for (int j = j0; j <= j1; ++j)
            for (int i = i0; i <= i1; ++i) cellItems[fill[size_t(j) * columns + i]++] = index;
    }
    seen.assign(segments.size(), 0);
}

void PlaneProfile::Near(float minX, float minY, float maxX, float maxY, std::vector<uint32_t>& found) const {
    found.clear();
    if (!(maxX >= originX && maxY >= originY)) return;
    const float toI0 = (minX - originX) / cell, toJ0 = (minY - originY) / cell;
    const float toI1 = (maxX - originX) / cell, toJ1 = (maxY - originY) / cell;
    if (!(toI0 < float(columns) && toJ0 < float(rows))) return;  // beyond the grid, or no number
    // Clamped as floats: a far-off box must not overflow the conversion.
    const int i0 = int(std::max(0.0f, toI0)), j0 = int(std::max(0.0f, toJ0));
    const int i1 = int(std::min(float(columns - 1), toI1)), j1 = int(std::min(float(rows - 1), toJ1));
    if (++query == 0) {
        std::fill(seen.begin(), seen.end(), 0);
        query = 1;
    }
    for (int j = j0; j <= j1; ++j)
        for (int i = i0; i <= i1; ++i) {
            const size_t c = size_t(j) * columns + i;
            for (uint32_t k = cellStart[c]; k < cellStart[c + 1]; ++k) {
                const uint32_t index = cellItems[k];
                if (seen[index] == query) continue;
                seen[index] = query;
                found.push_back(index);
            }
        }
    std::sort(found.begin(), found.end());
}

}  // namespace phys
