#include "physics/physics_system.h"

bool PhysicsSystem::Startup() { return true; }

void PhysicsSystem::Shutdown() {}
