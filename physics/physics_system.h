#pragma once
#include <cstdint>
#include <memory>

#include "core/vector3.h"
#include "physics/physics_types.h"
#include "physics/trigger_callback.h"

namespace phys {
class Actor;
class Joint;
class RevoluteJoint;
class Scene;
class TriggerListener;
class UserContactReport;
class UserFaultReport;
}  // namespace phys

// The one physics world: the scene, its surface materials, the group pairs whose contacts are
// reported, and the factories with which the game makes its actors and joints. It knows no
// game names: groups and materials are numbers the game gives meaning to.
//
// Every factory makes its actor at the world origin; the caller places it, sets its group and
// keeps it, and gives it back with ReleaseActor. A factory that cannot make what is asked
// (a size or mass outside phys::Scene's ranges, a mesh with nothing to collide with) returns
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
    phys::Actor* CreateSphereTrigger(float radius, phys::TriggerListener* owner);
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

    // Surface material `index` (0 is every actor's default). Needs Startup.
    void SetMaterial(uint16_t index, const phys::Material& material);
    // Contacts between actors of these two groups are reported when they start.
    void ReportContacts(uint16_t groupA, uint16_t groupB);
    // Who hears of reported contacts, inside Step; one at a time. Removing a listener that is
    // no longer the current one leaves the current one alone.
    void SetContactListener(phys::UserContactReport* listener);
    void RemoveContactListener(phys::UserContactReport* listener);
    // Who hears of dynamic actors the world switched off because their motion stopped being
    // finite (see phys::Scene::Simulate); one at a time, as contacts.
    void SetFaultListener(phys::UserFaultReport* listener);
    void RemoveFaultListener(phys::UserFaultReport* listener);
    // Null before Startup.
    phys::Scene* GetScene() const { return scene.get(); }

private:
    std::unique_ptr<phys::Scene> scene;
    TriggerCallback triggerCallback;
    phys::UserContactReport* contactListener = nullptr;
    phys::UserFaultReport* faultListener = nullptr;
};
