#pragma once
#include <cstdint>

#include "core/vector3.h"

// Plain values shared by the physics layer and its users. Nothing here needs the rigid-body
// library, so game code can include it freely.
namespace phys {

enum class ShapeKind { Sphere, Box, Mesh };

// How AddForce changes a body's motion.
enum class ForceMode {
    Impulse,         // velocity changes by impulse / mass
    VelocityChange,  // velocity changes by the given amount, whatever the mass
};

// Body flags: freeze movement along position axes or turning about rotation axes.
enum BodyFlag : uint32_t {
    FrozenPosX = 2,
    FrozenPosY = 4,
    FrozenPosZ = 8,
    FrozenRotX = 16,
    FrozenRotY = 32,
    FrozenRotZ = 64,
    FrozenPos = FrozenPosX | FrozenPosY | FrozenPosZ,
};

// Trigger report status; a report carries one or more of these.
enum TriggerFlag : uint32_t {
    TriggerOnEnter = 1,
    TriggerOnLeave = 2,
    TriggerOnStay = 4,
};

// Contact notifications asked for between two actor groups.
enum ContactFlag : uint32_t {
    NotifyOnStartTouch = 2,
};

// A surface: friction while sticking, friction while sliding, bounciness. Two touching
// surfaces combine each value by its average.
struct Material {
    float staticFriction = 0.0f;
    float dynamicFriction = 0.0f;
    float restitution = 0.0f;
};

// A revolute joint's motor: it drives the joint towards velTarget (radians per second about
// the hinge axis) with at most maxForce; with freeSpin it only speeds the hinge up, never brakes.
struct MotorDesc {
    float velTarget = 0.0f;
    float maxForce = 0.0f;
    bool freeSpin = false;
};

// Global settings of a scene.
enum class Parameter {
    SkinWidth,  // collision margin of boxes and meshes made afterwards, in level units
};

}  // namespace phys
