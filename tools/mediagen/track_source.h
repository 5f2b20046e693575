#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tools/mediagen/max_writer.h"
#include "tools/mediagen/polygon.h"

namespace mediagen {

// A track from assets/tracks/NAME.track (the format is described in assets/README.md):
// solid pieces, each an outline in the plane of play pushed out to a common depth.
struct TrackSource {
    double depth = 0;
    std::vector<std::vector<Point2>> pieces;  // counter-clockwise, whichever way they were written
};

inline constexpr double kTrackTile = 8.0;      // the track texture repeats every 8 units
inline constexpr double kTrackMaxSide = 2.0;   // side walls are cut into pieces this long at most

// name is the file the text came from; a bad source throws MediaError "name:line: reason".
TrackSource ParseTrack(std::string_view text, const std::string& name);
TrackSource ReadTrack(const std::filesystem::path& path);

// One object holding every piece as a closed prism from z = -depth/2 to depth/2.
MaxObject BuildTrack(const TrackSource& source, const std::string& objectName);

}  // namespace mediagen
