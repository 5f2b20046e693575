#pragma once
// Conversions between the game's math types and the rigid-body library's. Only physics/
// sources include this.
#include <btBulletDynamicsCommon.h>

#include "core/vector3.h"

namespace phys {

inline btVector3 ToBt(const Vector3& v) { return btVector3(v.x, v.y, v.z); }
inline Vector3 FromBt(const btVector3& v) { return Vector3(v.x(), v.y(), v.z()); }

}  // namespace phys
