#pragma once
#include <btBulletDynamicsCommon.h>

namespace phys {

// The library's world without its islands. Nothing in the game sleeps and nearly every body
// ends up in one island anyway, so building them every tick only costs time: the solver takes
// every body, contact and joint in one group instead.
class PlaneWorld : public btDiscreteDynamicsWorld {
public:
    using btDiscreteDynamicsWorld::btDiscreteDynamicsWorld;

protected:
    void calculateSimulationIslands() override {}
    void solveConstraints(btContactSolverInfo& info) override;

private:
    btAlignedObjectArray<btCollisionObject*> bodies;
    btAlignedObjectArray<btPersistentManifold*> manifolds;
    btAlignedObjectArray<btTypedConstraint*> constraints;
};

}  // namespace phys
