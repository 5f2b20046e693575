#pragma once

class btCollisionObject;
class btManifoldPoint;

namespace phys {

// Installs the rigid-body library's global contact hooks: friction and bounce combined by the
// average of the two materials, static friction while a contact sticks, and smooth rolling
// over the inner edges of triangle meshes. Idempotent.
void InstallSurfaceContactHooks();

// Gives a contact point between two actors' bodies its friction and bounce: the average of
// their materials, with static friction while the point does not slide.
void SetSurface(btManifoldPoint& point, const btCollisionObject* a, const btCollisionObject* b);

// Below this sliding speed (level units per second) a contact counts as sticking.
constexpr float kStickingSpeed = 0.1f;

}  // namespace phys
