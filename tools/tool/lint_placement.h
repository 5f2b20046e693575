#pragma once
// Where a level's objects start: balls inside other balls, inside round posts or cut by a
// track, and spawners close enough to another bumper to feed on the current ball without end.
#include <vector>

#include "formats/model.h"
#include "level/level_file.h"
#include "tools/tool/lint_problem.h"

namespace lint {

// A track and what balls collide with: the first sub-model of its collision model, which the
// game moves by the track's x and y.
struct TrackMesh {
    const LevelTrack* track;
    const SubModel* mesh;
};

void CheckPlacement(const LevelFile& file, const std::vector<TrackMesh>& tracks, std::vector<Problem>& problems);

}  // namespace lint
