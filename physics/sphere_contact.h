#pragma once
#include <BulletCollision/CollisionDispatch/btActivatingCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>

namespace phys {

// Two spheres touching: one contact point on the line between their centres. Unlike the
// library's own, it keeps the point from tick to tick while they touch, so the solver starts
// each tick from the impulse of the last and a pile of balls holds with less overlap.
class SphereContact : public btActivatingCollisionAlgorithm {
public:
    SphereContact(const btCollisionAlgorithmConstructionInfo& info, const btCollisionObjectWrapper* a,
                  const btCollisionObjectWrapper* b);
    ~SphereContact() override;

    void processCollision(const btCollisionObjectWrapper* a, const btCollisionObjectWrapper* b,
                          const btDispatcherInfo& dispatchInfo, btManifoldResult* result) override;
    btScalar calculateTimeOfImpact(btCollisionObject*, btCollisionObject*, const btDispatcherInfo&,
                                   btManifoldResult*) override {
        return 1;
    }
    void getAllContactManifolds(btManifoldArray& manifolds) override;

    struct CreateFunc : btCollisionAlgorithmCreateFunc {
        btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                       const btCollisionObjectWrapper* a,
                                                       const btCollisionObjectWrapper* b) override;
    };

private:
    btPersistentManifold* manifold = nullptr;
    const btCollisionObject* first;  // the manifold's first body
    bool holding = false;            // whether the manifold holds a point
};

}  // namespace phys
