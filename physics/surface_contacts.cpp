#include "physics/surface_contacts.h"

#include <BulletCollision/CollisionDispatch/btInternalEdgeUtility.h>
#include <BulletCollision/CollisionDispatch/btManifoldResult.h>

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

btScalar CombinedFriction(const btCollisionObject* a, const btCollisionObject* b) {
    const Material* ma = MaterialOfObject(a);
    const Material* mb = MaterialOfObject(b);
    if (!ma || !mb) return 0;
    return (ma->dynamicFriction + mb->dynamicFriction) * 0.5f;
}

btScalar CombinedRestitution(const btCollisionObject* a, const btCollisionObject* b) {
    const Material* ma = MaterialOfObject(a);
    const Material* mb = MaterialOfObject(b);
    if (!ma || !mb) return 0;
    return (ma->restitution + mb->restitution) * 0.5f;
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

    const btCollisionObject* a = wrap0->getCollisionObject();
    const btCollisionObject* b = wrap1->getCollisionObject();
    const Material* ma = MaterialOfObject(a);
    const Material* mb = MaterialOfObject(b);
    if (!ma || !mb) return false;
    btVector3 relative = PointVelocity(a, point.getPositionWorldOnA()) - PointVelocity(b, point.getPositionWorldOnB());
    const btVector3& n = point.m_normalWorldOnB;
    relative -= n * relative.dot(n);
    if (relative.length2() < kStickingSpeed * kStickingSpeed)
        point.m_combinedFriction = (ma->staticFriction + mb->staticFriction) * 0.5f;
    return false;
}

}  // namespace

void InstallSurfaceContactHooks() {
    gCalculateCombinedFrictionCallback = CombinedFriction;
    gCalculateCombinedRestitutionCallback = CombinedRestitution;
    gContactAddedCallback = OnContactPoint;
}

}  // namespace phys
