#pragma once

class PhysicsSystem;

// Gives the physics world the game's meaning: the two surface materials (0 for everything,
// 1 for dead balls) and the ball contacts that are reported (and make sounds).
void SetUpGameWorld(PhysicsSystem& physics);
