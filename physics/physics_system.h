#pragma once
#include <cstdint>
#include <memory>

#include "engine/vector3.h"
#include "physics/contact_report.h"
#include "physics/trigger_callback.h"

class ITriggerObject;
class ContactSoundPlayer;

namespace phys {
class Actor;
class Joint;
class RevoluteJoint;
class Scene;
}  // namespace phys

// The game's one physics world: the scene, its two surface materials, the contact pairs that
// make sounds, and the factories with which objects make their actors and joints.
//
// Every factory makes its actor at the world origin; the caller places it, sets its group and
// keeps it, and gives it back with ReleaseActor. A factory that cannot make what is asked
// (a size or mass that is not a positive number, a mesh with nothing to collide with) returns
// null, and the caller goes on without that actor.
class PhysicsSystem {
public:
    PhysicsSystem();
    virtual ~PhysicsSystem();
    PhysicsSystem(const PhysicsSystem&) = delete;
    PhysicsSystem& operator=(const PhysicsSystem&) = delete;

    virtual bool Startup();
    virtual void Shutdown();

    // Advances the world by dt (the game always passes 1/60 s: five ticks of 1/300 s). The
    // trigger and contact reports of the step run inside this call, before it returns.
    void Step(float dt);
    void SetGravity(const Vector3& gravity);

    phys::Actor* CreateSphereActor(float radius, float mass, uint16_t material);
    // A static sphere that reports what enters, stays in and leaves it to owner.
    phys::Actor* CreateSphereTrigger(float radius, ITriggerObject* owner);
    // Sizes are full edge lengths; the box's centre sits at the offset from the actor's origin.
    phys::Actor* CreateBoxActor(float sizeX, float sizeY, float sizeZ, float offsetX, float offsetY, float offsetZ,
                                float mass, uint16_t material);
    // Collides with the given triangles: vertices are x, y, z floats, triangles three 32-bit
    // indices each. Dynamic meshes collide through their collision map, which usePMap keeps
    // in a .pmap file in the working directory.
    phys::Actor* CreateMeshActor(uint32_t numVertices, const Vector3* vertices, uint32_t numTriangles,
                                 const uint32_t* triangles, float mass, bool usePMap, uint16_t material);
    // Keeps the actor's origin in the plane z = 0.
    phys::Joint* CreatePlaneJoint(phys::Actor* actor);
    // A hinge about the line through (worldX, worldY) parallel to z, meeting the actor at
    // (localX, localY) in its own frame.
    phys::RevoluteJoint* CreateRevoluteJoint(phys::Actor* actor, float worldX, float worldY, float localX,
                                             float localY);
    void ReleaseActor(phys::Actor* actor);
    void ReleaseJoint(phys::Joint* joint);

    // Where contact sounds go; none plays nothing.
    void SetContactSoundPlayer(ContactSoundPlayer* player) { contactReport.SetSoundPlayer(player); }
    // Who hears of a ball's contacts first (the level, for its "Contact" event); none is nobody.
    void SetContactListener(ContactListener* listener) { contactReport.SetListener(listener); }
    // Null before Startup.
    phys::Scene* GetScene() const { return scene.get(); }

private:
    std::unique_ptr<phys::Scene> scene;
    TriggerCallback triggerCallback;
    ContactReport contactReport;
};
