#include "level/object_kinds.h"

#include "level/level_file.h"
#include "objects/ball.h"
#include "objects/bumpers.h"
#include "objects/goal.h"
#include "objects/teleporters.h"
#include "objects/turbines.h"

namespace {

using Made = std::unique_ptr<GameObject>;

Made MakeBall(Level& l, const LevelObject& o) {
    return std::make_unique<Ball>(l, o.name, o.x, o.y, o.health, o.mass, o.radius);
}
Made MakeDeadBall(Level& l, const LevelObject& o) {
    return std::make_unique<DeadBall>(l, o.name, o.x, o.y, o.mass, o.radius);
}
Made MakeBumper(Level& l, const LevelObject& o) {
    return std::make_unique<Bumper>(l, o.name, o.x, o.y, o.force, o.radius);
}
Made MakeReverseGravityBumper(Level& l, const LevelObject& o) {
    return std::make_unique<ReverseGravityBumper>(l, o.name, o.x, o.y, o.force, o.radius);
}
Made MakeSpawnerBumper(Level& l, const LevelObject& o) {
    return std::make_unique<SpawnerBumper>(l, o.name, o.x, o.y, o.force, o.radius, o.count);
}
Made MakeFreeTurbine(Level& l, const LevelObject& o) {
    return std::make_unique<FreeTurbine>(l, o.name, o.x, o.y, o.mass);
}
Made MakeTurbine(Level& l, const LevelObject& o) { return std::make_unique<Turbine>(l, o.name, o.x, o.y, o.speed); }
Made MakePeg(Level& l, const LevelObject& o) { return std::make_unique<Peg>(l, o.name, o.x, o.y, o.radius); }
Made MakeHingedDoor(Level& l, const LevelObject& o) {
    return std::make_unique<HingedDoor>(l, o.name, o.x, o.y, o.mass);
}
Made MakeTeleporterEntrance(Level& l, const LevelObject& o) {
    auto entrance = std::make_unique<TeleporterEntrance>(l, o.name, o.x, o.y, o.radius);
    for (const std::string& exit : o.exits) entrance->AddExit(exit);
    return entrance;
}
Made MakeTeleporterExit(Level& l, const LevelObject& o) {
    return std::make_unique<TeleporterExit>(l, o.name, o.x, o.y);
}
Made MakeGoal(Level& l, const LevelObject& o) {
    return std::make_unique<Goal>(l, o.name, o.x, o.y, o.quota, o.radius);
}

}  // namespace

const std::vector<ObjectKind>& ObjectKinds() {
    static const std::vector<ObjectKind> kinds = {
        // The current ball raises Contact when it starts touching something.
        {"Ball", "Ball", "ball.3DS", {"mass", "health"}, {"Contact"}, {}, true, MakeBall},
        {"DeadBall", "DeadBall", "DeadBall.3DS", {"mass"}, {}, {}, true, MakeDeadBall},
        {"Bumper", "Bumper", "Bumper.3DS", {"force"}, {"Bump"}, {}, true, MakeBumper},
        {"RevGravBumper", "ReverseGravityBumper", "ReverseGravityBumper.3DS", {"force"},
         {"Bump", "GravityDown", "GravityUp"}, {}, true, MakeReverseGravityBumper},
        {"SpawnerBumper", "SpawnerBumper", "SpawnerBumper.3DS", {"force", "count"}, {"Bump"}, {}, true,
         MakeSpawnerBumper},
        {"FreeTurbine", "FreeTurbine", "turbine1.3DS", {"mass"}, {}, {}, false, MakeFreeTurbine},
        {"Turbine", "Turbine", "turbine2.3DS", {"speed"}, {}, {"SetSpeed"}, false, MakeTurbine},
        {"Peg", "Peg", "Peg.3DS", {}, {}, {}, true, MakePeg},
        {"HingedDoor", "HingedDoor", "HingedDoor.3DS", {"mass", "initialAngle"}, {}, {}, false, MakeHingedDoor},
        {"TeleportEntrance", "TeleporterEntrance", "TeleporterEntrance.3DS", {}, {"Enter"}, {"Disable", "Enable"},
         true, MakeTeleporterEntrance},
        {"TeleportExit", "TeleporterExit", "TeleporterExit.3DS", {}, {}, {}, false, MakeTeleporterExit},
        {"Goal", "Goal", "goal.3DS", {"quota"}, {"Score"}, {"Disable", "Enable"}, true, MakeGoal},
    };
    return kinds;
}

const ObjectKind* FindObjectKind(const std::string& element) {
    for (const ObjectKind& kind : ObjectKinds())
        if (element == kind.element) return &kind;
    return nullptr;
}

const ObjectKind* FindObjectClass(const std::string& className) {
    for (const ObjectKind& kind : ObjectKinds())
        if (className == kind.className) return &kind;
    return nullptr;
}
