#pragma once

namespace phys {

// Installs the rigid-body library's global contact hooks: friction and bounce combined by the
// average of the two materials, static friction while a contact sticks, and smooth rolling
// over the inner edges of triangle meshes. Idempotent.
void InstallSurfaceContactHooks();

// Below this sliding speed (level units per second) a contact counts as sticking.
constexpr float kStickingSpeed = 0.1f;

}  // namespace phys
