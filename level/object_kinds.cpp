#include "level/object_kinds.h"

const std::vector<ObjectKind>& ObjectKinds() {
    static const std::vector<ObjectKind> kinds = {
        // The current ball raises Contact when it starts touching something.
        {"Ball", "Ball", "Media/ball.3DS", {"mass", "health"}, {"Contact"}, {}, true},
        {"DeadBall", "DeadBall", "Media/DeadBall.3DS", {"mass"}, {}, {}, true},
        {"Bumper", "Bumper", "Media/Bumper.3DS", {"force"}, {"Bump"}, {}, true},
        {"RevGravBumper", "ReverseGravityBumper", "Media/ReverseGravityBumper.3DS", {"force"},
         {"Bump", "GravityDown", "GravityUp"}, {}, true},
        {"SpawnerBumper", "SpawnerBumper", "Media/SpawnerBumper.3DS", {"force", "count"}, {"Bump"}, {}, true},
        {"FreeTurbine", "FreeTurbine", "Media/turbine1.3DS", {"mass"}, {}, {}, false},
        {"Turbine", "Turbine", "Media/turbine2.3DS", {"speed"}, {}, {"SetSpeed"}, false},
        {"Peg", "Peg", "Media/Peg.3DS", {}, {}, {}, true},
        {"HingedDoor", "HingedDoor", "Media/HingedDoor.3DS", {"mass", "initialAngle"}, {}, {}, false},
        {"TeleportEntrance", "TeleporterEntrance", "Media/TeleporterEntrance.3DS", {}, {"Enter"},
         {"Disable", "Enable"}, true},
        {"TeleportExit", "TeleporterExit", "Media/TeleporterExit.3DS", {}, {}, {}, false},
        {"Goal", "Goal", "Media/goal.3DS", {"quota"}, {"Score"}, {"Disable", "Enable"}, true},
    };
    return kinds;
}

const ObjectKind* FindObjectKind(const std::string& element) {
    for (const ObjectKind& kind : ObjectKinds()) {
        if (element == kind.element) return &kind;
    }
    return nullptr;
}
