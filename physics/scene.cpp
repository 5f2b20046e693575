#include "physics/scene.h"

#include <algorithm>
#include <cmath>

#include "physics/actor.h"
#include "physics/bullet_convert.h"
#include "physics/joint.h"
#include "physics/plane_world.h"
#include "physics/scene_pairs.h"
#include "physics/sphere_contact.h"
#include "physics/track_contact.h"
#include "physics/surface_contacts.h"
#include "physics/triangle_mesh.h"

namespace phys {

namespace {

// Bodies lose this fraction of their spin each second, so a ball left alone on a flat floor
// comes to rest in the end.
constexpr float kAngularDamping = 0.05f;
// Contacts closing slower than this (units per second) do not bounce, so balls settle.
constexpr float kBounceThreshold = 2.0f;

bool InRange(float value, float low, float high) { return value >= low && value <= high; }

// An inertia whose inverse the solver can use: mass times size squared can overflow or vanish
// even when both are in range, as with a mesh of huge or collapsed geometry.
bool UsableInertia(const btVector3& inertia) {
    for (int i = 0; i < 3; ++i)
        if (!InRange(inertia[i], 1e-20f, 1e20f)) return false;
    return true;
}

std::unique_ptr<btBroadphaseInterface> MakeBroadphase() {
    auto broadphase = std::make_unique<btDbvtBroadphase>();
    // A moving body's bounds in the tree reach an eighth of its size further in the direction
    // it moves (a quarter of the half size), so a falling ball need not be moved in the tree
    // every tick. Further ahead keeps too many near misses once the pile is still.
    broadphase->setVelocityPrediction(0.25f);
    return broadphase;
}

}  // namespace

Scene::Scene()
    : configuration(std::make_unique<btDefaultCollisionConfiguration>()),
      dispatcher(std::make_unique<btCollisionDispatcher>(configuration.get())),
      broadphase(MakeBroadphase()),
      solver(std::make_unique<btSequentialImpulseConstraintSolver>()),
      world(std::make_unique<PlaneWorld>(dispatcher.get(), broadphase.get(), solver.get(),
                                                      configuration.get())),
      pairs(std::make_unique<ScenePairs>()) {
    InstallSurfaceContactHooks();
    const auto use = [this](int a, int b, std::unique_ptr<btCollisionAlgorithmCreateFunc> create) {
        dispatcher->registerCollisionCreateFunc(a, b, create.get());
        planeContacts.push_back(std::move(create));
    };
    use(SPHERE_SHAPE_PROXYTYPE, SPHERE_SHAPE_PROXYTYPE, std::make_unique<SphereContact::CreateFunc>());
    for (const auto& [a, b] : {std::pair{SPHERE_SHAPE_PROXYTYPE, TRIANGLE_MESH_SHAPE_PROXYTYPE},
                               std::pair{TRIANGLE_MESH_SHAPE_PROXYTYPE, SPHERE_SHAPE_PROXYTYPE}})
        use(a, b, std::make_unique<TrackContact::CreateFunc>(configuration->getCollisionAlgorithmCreateFunc(a, b)));
    world->setGravity(btVector3(0, -9.8f, 0));
    btContactSolverInfo& info = world->getSolverInfo();
    // Deep penetration is pushed apart without adding velocity, so bounces keep their
    // restitution. Shallow overlaps (under the library's 0.04) are left to the velocity solve:
    // resolving those apart as well makes resting piles shiver for good.
    info.m_splitImpulse = true;
    // Eight passes keep piles of balls still and cost a fifth less than the library's ten.
    info.m_numIterations = 8;
    info.m_restitutionVelocityThreshold = kBounceThreshold;
    materials.resize(1);
}

Scene::~Scene() {
    for (Joint* joint : joints) {
        if (joint->actor && joint->Constraint()) world->removeConstraint(joint->Constraint());
        delete joint;
    }
    for (Actor* actor : actors) {
        if (!actor->switchedOff) world->removeRigidBody(actor->body);
        delete actor;
    }
    for (Actor* actor : releasedWhileDelivering) delete actor;
}

void Scene::SetGravity(const Vector3& gravity) { world->setGravity(ToBt(gravity)); }

Vector3 Scene::GetGravity() const { return FromBt(world->getGravity()); }

void Scene::SetParameter(Parameter parameter, float value) {
    if (parameter == Parameter::SkinWidth && value >= 0 && std::isfinite(value)) skinWidth = value;
}

Material& Scene::GetMaterial(uint16_t index) {
    if (index >= materials.size()) materials.resize(size_t(index) + 1);
    return materials[index];
}

const Material& Scene::MaterialOf(uint16_t index) const {
    static const Material none;
    return index < materials.size() ? materials[index] : none;
}

static uint32_t GroupKey(uint16_t a, uint16_t b) {
    if (a > b) std::swap(a, b);
    return uint32_t(a) << 16 | b;
}

void Scene::SetGroupPairFlags(uint16_t a, uint16_t b, uint32_t flags) { groupPairFlags[GroupKey(a, b)] = flags; }

uint32_t Scene::GetGroupPairFlags(uint16_t a, uint16_t b) const {
    auto it = groupPairFlags.find(GroupKey(a, b));
    return it == groupPairFlags.end() ? 0 : it->second;
}

Actor* Scene::CreateActor(const ActorDesc& desc) {
    const bool dynamic = desc.mass != 0.0f;
    if (dynamic && !InRange(desc.mass, kMinMass, kMaxMass)) return nullptr;
    if (desc.trigger && (dynamic || desc.kind != ShapeKind::Sphere)) return nullptr;

    btCollisionShape* shape = nullptr;
    btCollisionShape* owned = nullptr;
    Vector3 centre(0, 0, 0);
    switch (desc.kind) {
        case ShapeKind::Sphere:
            if (!InRange(desc.radius, kMinSize, kMaxSize)) return nullptr;
            shape = owned = new btSphereShape(desc.radius);
            break;
        case ShapeKind::Box:
            for (const float half : {desc.halfExtents.x, desc.halfExtents.y, desc.halfExtents.z})
                if (!InRange(half, kMinSize, kMaxSize)) return nullptr;
            if (!std::isfinite(desc.offset.x) || !std::isfinite(desc.offset.y) || !std::isfinite(desc.offset.z))
                return nullptr;
            // The box turns about its own centre, which sits at the offset from the actor's origin.
            shape = owned = new btBoxShape(ToBt(desc.halfExtents));
            shape->setMargin(std::min(skinWidth, std::min({desc.halfExtents.x, desc.halfExtents.y,
                                                           desc.halfExtents.z})));
            centre = desc.offset;
            break;
        case ShapeKind::Mesh:
            if (!desc.mesh) return nullptr;
            shape = dynamic ? desc.mesh->GetDynamicShape(skinWidth) : desc.mesh->GetStaticShape(skinWidth);
            if (!shape) return nullptr;
            break;
    }

    btVector3 inertia(0, 0, 0);
    if (dynamic) {
        shape->calculateLocalInertia(desc.mass, inertia);
        if (!UsableInertia(inertia)) {
            delete owned;
            return nullptr;
        }
    }
    btRigidBody::btRigidBodyConstructionInfo info(dynamic ? desc.mass : 0.0f, nullptr, shape, inertia);
    info.m_startWorldTransform.setIdentity();
    info.m_startWorldTransform.setOrigin(ToBt(centre));
    info.m_angularDamping = kAngularDamping;

    auto* actor = new Actor();
    actor->scene = this;
    actor->body = new btRigidBody(info);
    actor->ownedShape = owned;
    actor->mesh = desc.mesh;
    actor->kind = desc.kind;
    actor->radius = desc.kind == ShapeKind::Sphere ? desc.radius : 0.0f;
    actor->halfExtents = desc.kind == ShapeKind::Box ? desc.halfExtents : Vector3(0, 0, 0);
    actor->offset = centre;
    actor->centreOfMass = centre;
    actor->mass = dynamic ? desc.mass : 0.0f;
    actor->material = desc.material;
    actor->trigger = desc.trigger;
    actor->serial = nextSerial++;

    btRigidBody* body = actor->body;
    body->setUserPointer(actor);
    // Game actors never sleep: a resting ball must answer a tilt at once.
    body->setActivationState(DISABLE_DEACTIVATION);
    // Balls and wheels turn about fixed or symmetric axes: no gyroscopic terms needed.
    body->setFlags(body->getFlags() & ~BT_ENABLE_GYROSCOPIC_FORCE_IMPLICIT_BODY);
    int flags = body->getCollisionFlags() | btCollisionObject::CF_CUSTOM_MATERIAL_CALLBACK;
    if (desc.trigger) flags |= btCollisionObject::CF_NO_CONTACT_RESPONSE;
    body->setCollisionFlags(flags);
    if (dynamic && desc.kind == ShapeKind::Sphere) {
        // A tick carries a ball of 300 units/s its own radius: faster than half that, its path
        // is swept, so it stops at a wall instead of passing through it between two ticks. The
        // swept sphere is smaller than the ball, so walls it already rests against do not count.
        body->setCcdMotionThreshold(desc.radius * 0.5f);
        body->setCcdSweptSphereRadius(desc.radius * 0.8f);
    }
    const Material& material = MaterialOf(desc.material);
    body->setFriction(material.dynamicFriction);
    body->setRestitution(material.restitution);
    world->addRigidBody(body);
    actors.push_back(actor);
    return actor;
}

void Scene::ReleaseActor(Actor* actor) {
    if (!actor || actor->released) return;
    auto it = std::find(actors.begin(), actors.end(), actor);
    if (it == actors.end()) return;
    actors.erase(it);
    if (!actor->switchedOff) Withdraw(actor);
    actor->released = true;
    if (delivering)
        releasedWhileDelivering.push_back(actor);
    else
        DestroyActor(actor);
}

void Scene::Withdraw(Actor* actor) {
    // Joints on the actor stop acting; their owner still releases them.
    for (Joint* joint : joints) {
        if (joint->actor != actor) continue;
        if (joint->Constraint()) world->removeConstraint(joint->Constraint());
        joint->actor = nullptr;
    }
    world->removeRigidBody(actor->body);
    ForgetActor(actor);
}

void Scene::DestroyActor(Actor* actor) {
    TriangleMesh* mesh = actor->mesh;
    delete actor;
    if (mesh) ReleaseTriangleMesh(mesh);
}

void Scene::ReleaseTriangleMesh(TriangleMesh* mesh) {
    if (std::any_of(actors.begin(), actors.end(), [mesh](const Actor* a) { return a->mesh == mesh; })) return;
    std::erase_if(meshes, [mesh](const auto& kept) { return kept.get() == mesh; });
}

PlaneJoint* Scene::CreatePlaneJoint(Actor* actor) {
    if (!actor || actor->released) return nullptr;
    auto* joint = new PlaneJoint(actor);
    if (joint->Constraint()) world->addConstraint(joint->Constraint(), true);
    joints.push_back(joint);
    return joint;
}

RevoluteJoint* Scene::CreateRevoluteJoint(Actor* actor, const Vector3& worldAnchor, const Vector3& localAnchor) {
    if (!actor || actor->released || !actor->IsDynamic()) return nullptr;
    auto* joint = new RevoluteJoint(actor, worldAnchor, localAnchor);
    world->addConstraint(joint->Constraint(), true);
    joints.push_back(joint);
    return joint;
}

void Scene::ReleaseJoint(Joint* joint) {
    auto it = std::find(joints.begin(), joints.end(), joint);
    if (it == joints.end()) return;
    joints.erase(it);
    if (joint->actor && joint->Constraint()) world->removeConstraint(joint->Constraint());
    delete joint;
}

TriangleMesh* Scene::CreateTriangleMesh(const Stream& cooked) {
    std::unique_ptr<TriangleMesh> mesh = ReadCookedMesh(cooked);
    if (!mesh) return nullptr;
    meshes.push_back(std::move(mesh));
    return meshes.back().get();
}

void Scene::RefreshPlacement(Actor* actor) {
    world->updateSingleAabb(actor->body);
    broadphase->getOverlappingPairCache()->cleanProxyFromPairs(actor->body->getBroadphaseHandle(), dispatcher.get());
    pairs->Teleported(actor);
}

}  // namespace phys
