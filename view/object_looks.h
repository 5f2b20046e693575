#pragma once
#include <string>

#include "graphics/material.h"

class GameObject;
class Level;

// How each kind of object looks: one palette for the whole game, so a kind is known at a
// glance by its colour as much as by its shape. Glows pulse with the play clock.
class ObjectLooks {
public:
    ObjectLooks();

    // The material for this object in this frame; `seconds` drives the pulses.
    OGLMaterial& For(const GameObject& object, const Level& level, float seconds);
    // Lit white under the track's texture, so the texture shows its own colours.
    OGLMaterial& TrackLight() { return track; }
    // The track's texture, "intro_t", set by the view before each frame's drawing.
    TextureMaterial& TrackTexture() { return trackTexture; }

private:
    TextureMaterial trackTexture;
    OGLMaterial track, currentBall, ball, deadBall, bumper, reverseBumper, spawner, peg, turbine, freeTurbine, door,
        entrance, exit, goal, disabled, unknown;
};
