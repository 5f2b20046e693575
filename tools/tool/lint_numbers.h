#pragma once
// The numbers of a level that load but play badly: outside level_limits' playable ranges, a
// quota that is never met or met at once, a spawner count the game reads as 3, bumpers whose
// force leaves them without a trigger.
#include <vector>

#include "level/level_file.h"
#include "level/object_kinds.h"
#include "tools/tool/lint_problem.h"

namespace lint {

void CheckTrackNumbers(const LevelTrack& track, std::vector<Problem>& problems);
// Only the numbers `kind` reads; those it could not read are reported elsewhere.
void CheckObjectNumbers(const LevelObject& object, const ObjectKind& kind, std::vector<Problem>& problems);

}  // namespace lint
