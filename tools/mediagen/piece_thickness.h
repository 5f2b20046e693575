#pragma once
#include <string>
#include <vector>

#include "tools/mediagen/polygon.h"

namespace mediagen {

// A ball moves up to its own radius, 1, in a physics tick at 300 units/s; a piece thinner than
// that lets such a ball's centre cross to its far half, and the contact then pushes it out
// behind the wall. Faster balls pass any wall, slower ones stop at any.
inline constexpr double kMinPieceThickness = 1.0;

// "" when a counter-clockwise simple outline is at least `minimum` thick everywhere: measured
// from points along every edge straight into the piece to the first edge beyond. Points closer
// than minimum / 2 to a corner are not measured, so only corners sharper than about 63 degrees
// count as thin. Otherwise where it is thinnest, naming points from 1.
std::string ThinPart(const std::vector<Point2>& outline, double minimum);

}  // namespace mediagen
