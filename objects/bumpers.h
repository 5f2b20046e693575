#pragma once
#include <cstdint>
#include <utility>

#include "objects/triggered_game_object.h"

// A fixed round post that kicks away whatever enters the trigger around it (10 % larger),
// flashes and throws sparks; "Bump" when that is the current ball. No force, no trigger.
class Bumper : public TriggeredGameObject {
public:
    Bumper(Level& level, std::string name, float x, float y, float force, float radius);
    void Update() override;
    const char* KindName() const override { return "Bumper"; }
    // Whether the bumper should be drawn enlarged this frame; reading it clears it.
    bool TakeFlash() { return std::exchange(flash, false); }
    bool IsFlashing() const { return flash; }
    float GetForce() const { return force; }

protected:
    phys::Actor* CurrentBallActor() const;

private:
    bool flash = false;
    float radius;
    float force;
};

// Also turns the level's gravity upside down each time the current ball enters it.
class ReverseGravityBumper : public Bumper {
public:
    ReverseGravityBumper(Level& level, std::string name, float x, float y, float force, float radius);
    void Update() override;
    const char* KindName() const override { return "ReverseGravityBumper"; }
};

// Also makes one, two or three new balls around itself each time the current ball enters.
class SpawnerBumper : public Bumper {
public:
    SpawnerBumper(Level& level, std::string name, float x, float y, float force, float radius, int32_t count);
    void Update() override;
    const char* KindName() const override { return "SpawnerBumper"; }

private:
    int32_t count;
};
