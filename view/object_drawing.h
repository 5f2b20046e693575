#pragma once
class GameObject;
class Level;
class ObjectLooks;

// Draws one object of the level with its class's model at its pose, in its kind's look:
// bodies at their actor's pose, bumpers enlarged for the frame after a hit, goals and
// teleporter entrances at their trigger, exits at their place, tracks with the track texture.
// An object without model or place draws nothing.
void DrawObject(GameObject& object, const Level& level, ObjectLooks& looks, float seconds);
