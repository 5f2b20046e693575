#include "physics/surface_contacts.h"

#include <BulletCollision/CollisionDispatch/btInternalEdgeUtility.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>

#include <algorithm>

#include "physics/actor.h"
#include "physics/bullet_convert.h"
#include "physics/scene.h"

namespace phys {

namespace {

const Material* MaterialOfObject(const btCollisionObject* object) {
    const auto* actor = static_cast<const Actor*>(object->getUserPointer());
    if (!actor) return nullptr;
    return &actor->GetScene()->MaterialOf(actor->GetMaterial());
}

// Two touching surfaces meet halfway.
float Average(const Material& a, const Material& b, float Material::*value) { return (a.*value + b.*value) * 0.5f; }

// Bodies that are no actors of ours (the bench's plain library scene) keep the library's own
// rule: the product of the two.
btScalar CombinedFriction(const btCollisionObject* a, const btCollisionObject* b) {
    const Material* ma = MaterialOfObject(a);
    const Material* mb = MaterialOfObject(b);
    if (!ma || !mb) return std::min(a->getFriction() * b->getFriction(), btScalar(10));
    return Average(*ma, *mb, &Material::dynamicFriction);
}

btScalar CombinedRestitution(const btCollisionObject* a, const btCollisionObject* b) {
    const Material* ma = MaterialOfObject(a);
    const Material* mb = MaterialOfObject(b);
    if (!ma || !mb) return a->getRestitution() * b->getRestitution();
    return Average(*ma, *mb, &Material::restitution);
}

btVector3 PointVelocity(const btCollisionObject* object, const btVector3& point) {
    const btRigidBody* body = btRigidBody::upcast(object);
    if (!body) return btVector3(0, 0, 0);
    return body->getVelocityInLocalPoint(point - body->getCenterOfMassPosition());
}

bool OnContactPoint(btManifoldPoint& point, const btCollisionObjectWrapper* wrap0, int part0, int index0,
                    const btCollisionObjectWrapper* wrap1, int part1, int index1) {
    if (wrap1->getCollisionShape()->getShapeType() == TRIANGLE_SHAPE_PROXYTYPE)
        btAdjustInternalEdgeContacts(point, wrap1, wrap0, part1, index1);
    else if (wrap0->getCollisionShape()->getShapeType() == TRIANGLE_SHAPE_PROXYTYPE)
        btAdjustInternalEdgeContacts(point, wrap0, wrap1, part0, index0);
    SetSurface(point, wrap0->getCollisionObject(), wrap1->getCollisionObject());
    return false;
}

}  // namespace

void SetSurface(btManifoldPoint& point, const btCollisionObject* a, const btCollisionObject* b) {
    const Material* ma = MaterialOfObject(a);
    const Material* mb = MaterialOfObject(b);
    if (!ma || !mb) {
        point.m_combinedFriction = point.m_combinedRestitution = 0;
        return;
    }
    point.m_combinedRestitution = Average(*ma, *mb, &Material::restitution);
    btVector3 relative = PointVelocity(a, point.getPositionWorldOnA()) - PointVelocity(b, point.getPositionWorldOnB());
    const btVector3& n = point.m_normalWorldOnB;
    relative -= n * relative.dot(n);
    const bool sticking = relative.length2() < kStickingSpeed * kStickingSpeed;
    point.m_combinedFriction = Average(*ma, *mb, sticking ? &Material::staticFriction : &Material::dynamicFriction);
}

void InstallSurfaceContactHooks() {
    gCalculateCombinedFrictionCallback = CombinedFriction;
    gCalculateCombinedRestitutionCallback = CombinedRestitution;
    gContactAddedCallback = OnContactPoint;
}

}  // namespace phys
