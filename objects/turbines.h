#pragma once
#include "objects/game_object.h"

namespace phys {
class RevoluteJoint;
}

// A paddle wheel on a motor about z; "SetSpeed N" changes the motor's speed. It collides with
// its model's first sub-model; without that model it has no body at all.
class Turbine : public GameObject {
public:
    Turbine(Level& level, std::string name, float x, float y, float speed);
    ~Turbine() override;
    void HandleMessage(const QueuedMessage& message) override;
    const char* KindName() const override { return "Turbine"; }
    float GetSpeed() const { return speed; }
    phys::RevoluteJoint* GetHinge() const { return hinge; }

private:
    float speed;
    phys::RevoluteJoint* hinge = nullptr;
};

// A paddle wheel that turns freely about z, pushed only by what hits it.
class FreeTurbine : public GameObject {
public:
    FreeTurbine(Level& level, std::string name, float x, float y, float mass);
    const char* KindName() const override { return "FreeTurbine"; }

private:
    float mass;
};

// A 1 x 6 x 10 slab that swings freely about a hinge at its foot.
class HingedDoor : public GameObject {
public:
    HingedDoor(Level& level, std::string name, float x, float y, float mass);
    ~HingedDoor() override;
    const char* KindName() const override { return "HingedDoor"; }

private:
    float mass;
    phys::RevoluteJoint* hinge = nullptr;
};

// A fixed round post.
class Peg : public GameObject {
public:
    Peg(Level& level, std::string name, float x, float y, float radius);
    const char* KindName() const override { return "Peg"; }

private:
    float radius;
};
