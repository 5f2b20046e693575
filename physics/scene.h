#pragma once
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "core/vector3.h"
#include "physics/physics_types.h"

class btDefaultCollisionConfiguration;
class btCollisionDispatcher;
class btBroadphaseInterface;
class btSequentialImpulseConstraintSolver;
class btDiscreteDynamicsWorld;
struct btCollisionAlgorithmCreateFunc;

namespace phys {

class Actor;
class Joint;
class PlaneJoint;
class RevoluteJoint;
class Stream;
class TriangleMesh;
class ScenePairs;

// What a new actor is made of. The shape is built around the actor's origin; the actor starts
// at the world origin with no rotation.
struct ActorDesc {
    ShapeKind kind = ShapeKind::Sphere;
    float radius = 0.0f;               // sphere
    Vector3 halfExtents{0, 0, 0};      // box
    Vector3 offset{0, 0, 0};           // box: its centre in the actor's frame
    TriangleMesh* mesh = nullptr;      // mesh
    float mass = 0.0f;                 // exactly 0: static; anything else: dynamic
    uint16_t material = 0;
    bool trigger = false;              // static sphere that senses instead of touching
};

// Receives what entered, stayed in or left each trigger during a step.
class UserTriggerReport {
public:
    virtual ~UserTriggerReport() = default;
    virtual void OnTrigger(Actor* trigger, Actor* other, uint32_t status) = 0;
};

// Two actors that started to touch, and how hard they met: the sum of the normal impulses
// (mass times change of speed) the solver gave the contact in the tick it began. Per tick, not
// per second, so a blow and a gentle touch differ as they sound: a ball of mass 1 landing at
// 30 units/s gives about 30-60, one set down gently well under 2.
struct ContactPair {
    Actor* actors[2];
    Vector3 sumNormalForce;
};

class UserContactReport {
public:
    virtual ~UserContactReport() = default;
    virtual void OnContactNotify(const ContactPair& pair, uint32_t events) = 0;
};

// Why the scene switched a dynamic actor off during a step.
enum class Fault {
    NotFinite,    // its position, rotation or velocity stopped being a finite number
    OutOfBounds,  // it grew or flew beyond what the broadphase can hold
};

// Hears of actors switched off during a step, after the step's contact reports.
class UserFaultReport {
public:
    virtual ~UserFaultReport() = default;
    virtual void OnActorSwitchedOff(Actor* actor, Fault fault) = 0;
};

// The world every actor lives in.
//
// Determinism: the same actors made in the same order and the same calls give bit-identical
// results. Everything the scene reports is ordered by creation order and by the solver's own
// (deterministic) pair order, never by addresses.
class Scene {
public:
    static constexpr float kTick = 1.0f / 300.0f;
    static constexpr int kMaxTicksPerStep = 10;

    Scene();
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    void SetGravity(const Vector3& gravity);
    Vector3 GetGravity() const;
    void SetParameter(Parameter parameter, float value);

    // The material of an index, made (with zero friction and bounce) when it does not exist.
    Material& GetMaterial(uint16_t index);
    const Material& MaterialOf(uint16_t index) const;

    // Which contacts between actors of groups a and b are reported (in either order).
    void SetGroupPairFlags(uint16_t a, uint16_t b, uint32_t flags);
    uint32_t GetGroupPairFlags(uint16_t a, uint16_t b) const;

    void SetTriggerReport(UserTriggerReport* report) { triggerReport = report; }
    void SetContactReport(UserContactReport* report) { contactReport = report; }
    void SetFaultReport(UserFaultReport* report) { faultReport = report; }

    // Masses and sizes (radii, half extents) the solver can work with in single precision.
    static constexpr float kMinMass = 1e-6f, kMaxMass = 1e9f;
    static constexpr float kMinSize = 1e-4f, kMaxSize = 1e4f;

    // Null when the description cannot make an actor: a mass or size outside the ranges above
    // (or an inertia they would make overflow), a missing mesh.
    Actor* CreateActor(const ActorDesc& desc);
    void ReleaseActor(Actor* actor);
    PlaneJoint* CreatePlaneJoint(Actor* actor);
    RevoluteJoint* CreateRevoluteJoint(Actor* actor, const Vector3& worldAnchor, const Vector3& localAnchor);
    void ReleaseJoint(Joint* joint);

    // Reads a cooked mesh. The scene keeps it while actors use it: it goes with the last of
    // them, or with the scene. Null when the stream does not hold a cooked mesh.
    TriangleMesh* CreateTriangleMesh(const Stream& cooked);
    size_t GetMeshCount() const { return meshes.size(); }
    // Frees a mesh that no actor uses (one that turned out to make no actor); else nothing.
    void ReleaseTriangleMesh(TriangleMesh* mesh);

    // Advances by dt in ticks of exactly kTick (at most kMaxTicksPerStep; time left over is
    // carried to the next call), then delivers the trigger and contact reports of those
    // ticks, in the order they happened, and the actors switched off, before returning.
    //
    // A dynamic actor whose motion stops being finite in a tick is switched off right after
    // that tick, before it can spread to what it touches: put back where it was when the
    // step began, stopped, and taken out of the world.
    void Simulate(float dt);
    int GetLastTickCount() const { return lastTicks; }
    size_t GetActorCount() const { return actors.size(); }

private:
    friend class Actor;

    // After a teleport: the broadphase learns the new bounds, and old pairs are dropped.
    void RefreshPlacement(Actor* actor);
    void ForgetActor(Actor* actor);
    // Deletes a released actor, and its mesh when no other actor uses it.
    void DestroyActor(Actor* actor);
    // Takes the actor and its joints out of the world.
    void Withdraw(Actor* actor);
    void SwitchOffRunaways();

    // Our collision algorithms for balls in the plane; they outlive the dispatcher.
    std::vector<std::unique_ptr<btCollisionAlgorithmCreateFunc>> planeContacts;
    std::unique_ptr<btDefaultCollisionConfiguration> configuration;
    std::unique_ptr<btCollisionDispatcher> dispatcher;
    std::unique_ptr<btBroadphaseInterface> broadphase;
    std::unique_ptr<btSequentialImpulseConstraintSolver> solver;
    std::unique_ptr<btDiscreteDynamicsWorld> world;
    std::unique_ptr<ScenePairs> pairs;

    std::vector<Material> materials;
    std::unordered_map<uint32_t, uint32_t> groupPairFlags;
    UserTriggerReport* triggerReport = nullptr;
    UserContactReport* contactReport = nullptr;
    UserFaultReport* faultReport = nullptr;
    std::vector<std::pair<Actor*, Fault>> faults;  // of the step being played

    std::vector<Actor*> actors;  // creation order
    std::vector<Joint*> joints;
    std::vector<std::unique_ptr<TriangleMesh>> meshes;
    uint32_t nextSerial = 1;
    double leftoverTime = 0.0;
    float skinWidth = 0.01f;
    int lastTicks = 0;
    bool delivering = false;
    std::vector<Actor*> releasedWhileDelivering;
};

}  // namespace phys
