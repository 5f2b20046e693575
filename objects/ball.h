#pragma once
#include "objects/game_object.h"

class Random;

// The game piece: a dynamic sphere in the plane z = 0 under the level's gravity.
class Ball : public GameObject {
public:
    Ball(Level& level, std::string name, float x, float y, float health, float mass, float radius);
    bool IsBall() const override { return true; }
    const char* KindName() const override { return "Ball"; }
    // A random impulse of 20 from a direction drawn in the unit cube.
    void Nudge(Random& random);

    float GetRadius() const { return radius; }
    float GetHealth() const { return health; }

private:
    float radius;
    float health;  // kept from the level file; nothing reads it
    float mass;
};

// An inert, grippy ball: rolls like one, but never counts, is never selected or collected.
class DeadBall : public GameObject {
public:
    DeadBall(Level& level, std::string name, float x, float y, float mass, float radius);
    const char* KindName() const override { return "DeadBall"; }

private:
    float radius;
    float mass;
};
