#pragma once

// The physics world: scene, materials, actor and joint factories, stepping.
class PhysicsSystem {
public:
    virtual ~PhysicsSystem() = default;
    virtual bool Startup();
    virtual void Shutdown();
};
