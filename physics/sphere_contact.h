#pragma once
#include "physics/kept_contact.h"

namespace phys {

// Two spheres touching: one contact point on the line between their centres. Unlike the
// library's own, it keeps the point from tick to tick while they touch, so a pile of balls
// holds with less overlap.
class SphereContact : public KeptContact {
public:
    SphereContact(const btCollisionAlgorithmConstructionInfo& info, const btCollisionObjectWrapper* a,
                  const btCollisionObjectWrapper* b);

    void processCollision(const btCollisionObjectWrapper* a, const btCollisionObjectWrapper* b,
                          const btDispatcherInfo& dispatchInfo, btManifoldResult* result) override;

    struct CreateFunc : btCollisionAlgorithmCreateFunc {
        btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                       const btCollisionObjectWrapper* a,
                                                       const btCollisionObjectWrapper* b) override;
    };

private:
    const btCollisionObject* first;  // the manifold's first body
    bool holding = false;            // whether the manifold holds a point
};

}  // namespace phys
