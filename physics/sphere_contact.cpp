#include "physics/sphere_contact.h"

#include <btBulletCollisionCommon.h>

#include <utility>

#include "physics/surface_contacts.h"

namespace phys {

SphereContact::SphereContact(const btCollisionAlgorithmConstructionInfo& info, const btCollisionObjectWrapper* a,
                             const btCollisionObjectWrapper* b)
    : KeptContact(info, a, b, a->getCollisionObject(), b->getCollisionObject()), first(a->getCollisionObject()) {}

void SphereContact::processCollision(const btCollisionObjectWrapper* a, const btCollisionObjectWrapper* b,
                                     const btDispatcherInfo&, btManifoldResult*) {
    if (a->getCollisionObject() != first) std::swap(a, b);
    const btTransform& placeA = a->getWorldTransform();
    const btTransform& placeB = b->getWorldTransform();
    const btScalar radiusA = static_cast<const btSphereShape*>(a->getCollisionShape())->getRadius();
    const btScalar radiusB = static_cast<const btSphereShape*>(b->getCollisionShape())->getRadius();
    const btVector3 between = placeA.getOrigin() - placeB.getOrigin();
    const btScalar length = between.length();
    if (length > radiusA + radiusB) {
        // Most pairs the broadphase hands over are near misses: their manifold, large and
        // far away in memory, is left alone unless it holds a point.
        if (holding) manifold->clearManifold();
        holding = false;
        return;
    }
    holding = true;
    const btScalar distance = length - (radiusA + radiusB);
    // Two spheres at one place push apart along x, as good a way as any.
    const btVector3 normal = length > SIMD_EPSILON ? between / length : btVector3(1, 0, 0);
    const btVector3 onB = placeB.getOrigin() + normal * radiusB;
    const btVector3 onA = onB + normal * distance;
    if (manifold->getNumContacts() == 0) {
        btManifoldPoint point(placeA.invXform(onA), placeB.invXform(onB), normal, distance);
        point.m_positionWorldOnA = onA;
        point.m_positionWorldOnB = onB;
        SetSurface(point, a->getCollisionObject(), b->getCollisionObject());
        manifold->addManifoldPoint(point);
        return;
    }
    // Moved in place, keeping the impulses the solver warm-starts from.
    btManifoldPoint& point = manifold->getContactPoint(0);
    point.m_localPointA = placeA.invXform(onA);
    point.m_localPointB = placeB.invXform(onB);
    point.m_positionWorldOnA = onA;
    point.m_positionWorldOnB = onB;
    point.m_normalWorldOnB = normal;
    point.m_distance1 = distance;
    ++point.m_lifeTime;
    SetSurface(point, a->getCollisionObject(), b->getCollisionObject());
}

btCollisionAlgorithm* SphereContact::CreateFunc::CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                                         const btCollisionObjectWrapper* a,
                                                                         const btCollisionObjectWrapper* b) {
    return Make<SphereContact>(info, a, b);
}

}  // namespace phys
