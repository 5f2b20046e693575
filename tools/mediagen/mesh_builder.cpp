#include "tools/mediagen/mesh_builder.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "tools/mediagen/media_error.h"

namespace mediagen {

namespace {

bool OnAxis(double r) { return std::abs(r) < 1e-9; }

// Longitude and latitude of a direction, as texture coordinates.
std::array<double, 2> SphereUv(double x, double y, double z) {
    return {std::atan2(y, x) / (2 * std::numbers::pi) + 0.5, std::acos(std::clamp(z, -1.0, 1.0)) / std::numbers::pi};
}

}  // namespace

uint16_t MeshBuilder::Vertex(Vector3 position, float u, float v) {
    if (object_.vertices.size() >= 0xffff) {
        throw MediaError("3DS object \"" + object_.name + "\" needs more than 65535 vertices");
    }
    object_.vertices.push_back(position);
    object_.texCoords.push_back({u, v});
    return uint16_t(object_.vertices.size() - 1);
}

void MeshBuilder::Lathe(const std::vector<std::vector<Point2>>& strands, int segments, Vector3 centre) {
    for (const std::vector<Point2>& strand : strands) {
        const size_t n = strand.size();
        const bool closed = n > 3 && strand.front().x == strand.back().x && strand.front().y == strand.back().y;
        const size_t ringCount = closed ? n - 1 : n;
        std::vector<double> along(n, 0);
        for (size_t i = 1; i < n; ++i) {
            along[i] = along[i - 1] + std::hypot(strand[i].x - strand[i - 1].x, strand[i].y - strand[i - 1].y);
        }
        const double length = std::max(along.back(), 1e-9);

        // One ring of vertices per point, or a single vertex on the axis. Texture coordinates
        // run out and back (round the axis, and along a closed strand) so that the first and
        // last columns can be the same vertices, and the normals have no seam.
        std::vector<std::vector<uint16_t>> rings(ringCount);
        for (size_t i = 0; i < ringCount; ++i) {
            const double r = strand[i].x;
            const float z = float(centre.z + strand[i].y);
            const float v = float(closed ? 2 * std::min(along[i], length - along[i]) / length : along[i] / length);
            if (OnAxis(r)) {
                rings[i].push_back(Vertex({centre.x, centre.y, z}, 0.5f, v));
                continue;
            }
            for (int s = 0; s < segments; ++s) {
                const double angle = 2 * std::numbers::pi * s / segments;
                const Vector3 at{float(centre.x + r * std::cos(angle)), float(centre.y + r * std::sin(angle)), z};
                rings[i].push_back(Vertex(at, float(2.0 * std::min(s, segments - s) / segments), v));
            }
        }
        auto at = [&](size_t i, int s) {
            const std::vector<uint16_t>& ring = rings[i % ringCount];
            return ring.size() == 1 ? ring[0] : ring[size_t(s % segments)];
        };
        for (size_t i = 0; i + 1 < n; ++i) {
            const bool axisHere = OnAxis(strand[i].x), axisNext = OnAxis(strand[i + 1].x);
            if (axisHere && axisNext) continue;
            for (int s = 0; s < segments; ++s) {
                const uint16_t a = at(i, s), b = at(i, s + 1), c = at(i + 1, s + 1), d = at(i + 1, s);
                if (axisHere) {
                    Triangle(a, c, d);
                } else if (axisNext) {
                    Triangle(a, b, c);
                } else {
                    Triangle(a, b, c);
                    Triangle(a, c, d);
                }
            }
        }
    }
}

void MeshBuilder::Prism(const std::vector<Point2>& outline, float z0, float z1, float tile, double maxSide) {
    std::vector<Point2> ccw = outline;
    if (SignedArea2(ccw) < 0) std::reverse(ccw.begin(), ccw.end());
    std::vector<size_t> cornerAt;
    const std::vector<Point2> boundary = SplitEdges(ccw, maxSide, &cornerAt);
    const Triangulation cap = Triangulate(boundary);
    if (cap.triangles.empty()) throw MediaError("3DS object \"" + object_.name + "\": an outline cannot be triangulated");

    // Sides: one run of shared vertices per edge, so each corner is a crease.
    double travelled = 0;
    for (size_t e = 0; e < ccw.size(); ++e) {
        const size_t first = cornerAt[e];
        const size_t last = e + 1 < ccw.size() ? cornerAt[e + 1] : boundary.size();
        std::vector<uint16_t> low, high;
        for (size_t i = first; i <= last; ++i) {
            const Point2& p = boundary[i % boundary.size()];
            if (i > first) {
                const Point2& q = boundary[i - 1];
                travelled += std::hypot(p.x - q.x, p.y - q.y);
            }
            const float u = float(travelled / tile);
            low.push_back(Vertex({float(p.x), float(p.y), z0}, u, z0 / tile));
            high.push_back(Vertex({float(p.x), float(p.y), z1}, u, z1 / tile));
        }
        for (size_t k = 0; k + 1 < low.size(); ++k) {
            Triangle(low[k], low[k + 1], high[k + 1]);
            Triangle(low[k], high[k + 1], high[k]);
        }
    }

    // Caps: the front as triangulated, the back mirrored.
    for (const float z : {z1, z0}) {
        std::vector<uint16_t> index;
        for (const Point2& p : cap.points) index.push_back(Vertex({float(p.x), float(p.y), z}, float(p.x / tile), float(p.y / tile)));
        for (const auto& t : cap.triangles) {
            if (z == z1) {
                Triangle(index[t[0]], index[t[1]], index[t[2]]);
            } else {
                Triangle(index[t[0]], index[t[2]], index[t[1]]);
            }
        }
    }
}

void MeshBuilder::BevelledPrism(const std::vector<Point2>& outline, float z0, float z1, float bevel, bool bevelBack,
                                float tile) {
    std::vector<Point2> ccw = outline;
    if (SignedArea2(ccw) < 0) std::reverse(ccw.begin(), ccw.end());
    const std::vector<Point2> inner = Inset(ccw, bevel);
    const Triangulation front = Triangulate(inner);
    const Triangulation back = Triangulate(bevelBack ? inner : ccw);
    if (front.triangles.empty() || back.triangles.empty()) {
        throw MediaError("3DS object \"" + object_.name + "\": a bevelled outline cannot be triangulated");
    }

    // Bands from back to front, each a ring of the outline (or the inset one) at a depth; every
    // edge of every band is its own flat quad, so each corner and each chamfer is a crease.
    struct Ring {
        const std::vector<Point2>* points;
        float z;
    };
    std::vector<Ring> bands;
    if (bevelBack) bands.push_back({&inner, z0});
    bands.push_back({&ccw, bevelBack ? z0 + bevel : z0});
    bands.push_back({&ccw, z1 - bevel});
    bands.push_back({&inner, z1});
    const size_t n = ccw.size();
    for (size_t k = 0; k + 1 < bands.size(); ++k) {
        const Ring &low = bands[k], &high = bands[k + 1];
        double travelled = 0;
        for (size_t e = 0; e < n; ++e) {
            const size_t f = (e + 1) % n;
            const double edge = std::hypot(ccw[f].x - ccw[e].x, ccw[f].y - ccw[e].y);
            const float u0 = float(travelled / tile), u1 = float((travelled + edge) / tile);
            travelled += edge;
            auto at = [&](const Ring& ring, size_t i, float u) {
                const Point2& p = (*ring.points)[i];
                return Vertex({float(p.x), float(p.y), ring.z}, u, ring.z / tile);
            };
            const uint16_t a = at(low, e, u0), b = at(low, f, u1), c = at(high, f, u1), d = at(high, e, u0);
            Triangle(a, b, c);
            Triangle(a, c, d);
        }
    }

    for (const auto& [cap, z] : {std::pair{&front, z1}, std::pair{&back, z0}}) {
        std::vector<uint16_t> index;
        for (const Point2& p : cap->points) index.push_back(Vertex({float(p.x), float(p.y), z}, float(p.x / tile), float(p.y / tile)));
        for (const auto& t : cap->triangles) {
            if (cap == &front) {
                Triangle(index[t[0]], index[t[1]], index[t[2]]);
            } else {
                Triangle(index[t[0]], index[t[2]], index[t[1]]);
            }
        }
    }
}

void MeshBuilder::Box(Vector3 low, Vector3 high, float tile, float bevel) {
    if (bevel <= 0) {
        const std::vector<Point2> outline{{low.x, low.y}, {high.x, low.y}, {high.x, high.y}, {low.x, high.y}};
        Prism(outline, low.z, high.z, tile, 1e9);
        return;
    }
    // The corners cut off along z, then the front and back edges bevelled.
    const double x0 = low.x, x1 = high.x, y0 = low.y, y1 = high.y, b = bevel;
    const std::vector<Point2> outline{{x0 + b, y0}, {x1 - b, y0}, {x1, y0 + b}, {x1, y1 - b},
                                      {x1 - b, y1}, {x0 + b, y1}, {x0, y1 - b}, {x0, y0 + b}};
    BevelledPrism(outline, low.z, high.z, bevel, true, tile);
}

void MeshBuilder::FacetedSphere(Vector3 centre, float radius, int splits) {
    using D3 = std::array<double, 3>;
    auto place = [&](const D3& d) {
        const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        return D3{d[0] / length, d[1] / length, d[2] / length};
    };
    auto facet = [&](const D3& a, const D3& b, const D3& c) {
        std::array<std::array<double, 2>, 3> uv{SphereUv(a[0], a[1], a[2]), SphereUv(b[0], b[1], b[2]),
                                                SphereUv(c[0], c[1], c[2])};
        // Keep a facet that straddles the seam in one piece of the texture.
        const double top = std::max({uv[0][0], uv[1][0], uv[2][0]});
        for (auto& coord : uv) {
            if (top - coord[0] > 0.5) coord[0] += 1;
        }
        std::array<uint16_t, 3> index{};
        const std::array<const D3*, 3> corners{&a, &b, &c};
        for (size_t k = 0; k < 3; ++k) {
            const D3& p = *corners[k];
            index[k] = Vertex({float(centre.x + radius * p[0]), float(centre.y + radius * p[1]), float(centre.z + radius * p[2])},
                              float(uv[k][0]), float(uv[k][1]));
        }
        Triangle(index[0], index[1], index[2]);
    };
    for (int sx : {1, -1}) {
        for (int sy : {1, -1}) {
            for (int sz : {1, -1}) {
                D3 a{double(sx), 0, 0}, b{0, double(sy), 0};
                const D3 c{0, 0, double(sz)};
                if (sx * sy * sz < 0) std::swap(a, b);  // keep the tips counter-clockwise from outside
                auto at = [&](int i, int j) {
                    const double wa = double(splits - i - j) / splits, wb = double(i) / splits, wc = double(j) / splits;
                    return place({a[0] * wa + b[0] * wb + c[0] * wc, a[1] * wa + b[1] * wb + c[1] * wc,
                                  a[2] * wa + b[2] * wb + c[2] * wc});
                };
                for (int i = 0; i < splits; ++i) {
                    for (int j = 0; i + j < splits; ++j) {
                        facet(at(i, j), at(i + 1, j), at(i, j + 1));
                        if (i + j + 2 <= splits) facet(at(i + 1, j), at(i + 1, j + 1), at(i, j + 1));
                    }
                }
            }
        }
    }
}

}  // namespace mediagen
