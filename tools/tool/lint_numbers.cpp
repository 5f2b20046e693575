#include "tools/tool/lint_numbers.h"

#include <cmath>
#include <cstdint>
#include <string>

#include "level/level_limits.h"

namespace lint {
namespace {

using level_limits::Range;

const char* const kPhysicsBreaks = "the physics may refuse it or make NaN";
const char* const kFarOut = "the physics loses precision that far out";

// Where a number came from, for the messages.
struct Source {
    std::string element, who;
    int line;
};

// `consequence` says what the value does to play; null when the game does not use it.
void CheckRange(const Source& source, const char* attribute, float value, Range range, const char* consequence,
                std::vector<Problem>& problems) {
    if (std::isfinite(value) && range.Holds(value)) return;
    std::string message = source.who + ": " + attribute + " " + Number(value) + " is outside the playable range " +
                          Number(range.low) + " to " + Number(range.high);
    if (consequence) message += std::string("; ") + consequence;
    problems.push_back({false, source.line, source.element, message});
}

// A bumper makes its trigger only when its force is above 0 (objects/bumpers.cpp).
void CheckForce(const Source& source, const LevelObject& object, std::vector<Problem>& problems) {
    if (object.force > 0) {
        CheckRange(source, "force", object.force, level_limits::kForce,
                   "a ball of mass 1 kicked harder than that crosses a whole level in a few frames", problems);
        return;
    }
    const char* lost = "kicks or raises \"Bump\"";
    if (object.kind == "RevGravBumper") lost = "kicks, turns gravity round or raises its events";
    if (object.kind == "SpawnerBumper") lost = "kicks, makes new balls or raises \"Bump\"";
    problems.push_back({false, source.line, source.element,
                        source.who + ": force " + Number(object.force) +
                            " is not above 0, so it has no trigger: it never " + lost + ", and is only a post"});
}

// Level::ApplyRules wins when ceil(quota x every ball the level ever had) are in.
void CheckQuota(const Source& source, float quota, std::vector<Problem>& problems) {
    if (quota <= 0) {
        problems.push_back({false, source.line, source.element,
                            source.who + ": quota " + Number(quota) + " is not above 0, so the level is won at once"});
    } else if (!level_limits::kQuota.Holds(quota)) {
        problems.push_back({false, source.line, source.element,
                            source.who + ": quota " + Number(quota) +
                                " is above 1, more than every ball the level ever had, so it is never met and the "
                                "level cannot be won"});
    }
}

// SpawnerBumper::Update makes one or two balls for a count of 1 or 2, and three for anything else.
void CheckCount(const Source& source, int32_t count, std::vector<Problem>& problems) {
    if (count >= 1 && count <= 3) return;
    problems.push_back({false, source.line, source.element,
                        source.who + ": count " + std::to_string(count) + " is not 1, 2 or 3, so it makes 3 balls"});
}

void CheckOwnNumber(const Source& source, const LevelObject& object, const std::string& attribute,
                    std::vector<Problem>& problems) {
    if (attribute == "force") {
        CheckForce(source, object, problems);
    } else if (attribute == "quota") {
        CheckQuota(source, object.quota, problems);
    } else if (attribute == "count") {
        CheckCount(source, object.count, problems);
    } else if (attribute == "mass") {
        // A mass of 0 or less is an error of its own: no body at all.
        if (object.mass > 0) CheckRange(source, "mass", object.mass, level_limits::kMass, kPhysicsBreaks, problems);
    } else if (attribute == "speed") {
        CheckRange(source, "speed", object.speed, level_limits::kSpeed,
                   "the wheel spins too fast for the physics or makes NaN", problems);
    } else if (attribute == "health") {
        CheckRange(source, "health", object.health, level_limits::kHealth, nullptr, problems);
    } else if (attribute == "initialAngle") {
        CheckRange(source, "initialAngle", object.initialAngle, level_limits::kInitialAngle, nullptr, problems);
    }
}

}  // namespace

void CheckTrackNumbers(const LevelTrack& track, std::vector<Problem>& problems) {
    const Source source{"Track", Describe(track), track.line};
    if (ReadWell(track.problems, "x")) CheckRange(source, "x", track.x, level_limits::kCoordinate, kFarOut, problems);
    if (ReadWell(track.problems, "y")) CheckRange(source, "y", track.y, level_limits::kCoordinate, kFarOut, problems);
}

void CheckObjectNumbers(const LevelObject& object, const ObjectKind& kind, std::vector<Problem>& problems) {
    const Source source{object.kind, Describe(object), object.line};
    if (ReadWell(object.problems, "x")) CheckRange(source, "x", object.x, level_limits::kCoordinate, kFarOut, problems);
    if (ReadWell(object.problems, "y")) CheckRange(source, "y", object.y, level_limits::kCoordinate, kFarOut, problems);
    // A radius of 0 or less has a warning of its own.
    if (kind.usesRadius && ReadWell(object.problems, "radius") && object.radius > 0) {
        CheckRange(source, "radius", object.radius, level_limits::kRadius, kPhysicsBreaks, problems);
    }
    for (const char* attribute : kind.attributes) {
        if (ReadWell(object.problems, attribute)) CheckOwnNumber(source, object, attribute, problems);
    }
}

}  // namespace lint
