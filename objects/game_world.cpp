#include "objects/game_world.h"

#include "objects/actor_group.h"
#include "physics/physics_system.h"

void SetUpGameWorld(PhysicsSystem& physics) {
    physics.SetMaterial(kDefaultMaterial, {.staticFriction = 0.6f, .dynamicFriction = 0.1f, .restitution = 0.3f});
    // Dead balls: grippy and dull.
    physics.SetMaterial(kDeadBallMaterial, {.staticFriction = 0.8f, .dynamicFriction = 0.7f, .restitution = 0.0f});
    for (uint16_t group : {GroupTrack, GroupBumper, GroupProp, GroupPeg}) physics.ReportContacts(GroupBall, group);
}
