#pragma once
#include "engine/vector3.h"

// Base of every object in a level.
class GameObject {
public:
    virtual ~GameObject() = default;
    virtual Vector3 GetPosition() const = 0;
};
