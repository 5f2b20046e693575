#pragma once
#include <btBulletDynamicsCommon.h>

#include "physics/plane_solver.h"

namespace phys {

// The library's world without its islands. Nothing in the game sleeps and nearly every body
// ends up in one island anyway, so building them every tick only costs time: the solver takes
// every body, contact and joint in one group instead. While everything keeps to the plane
// z = 0, as the game's bodies do, the group goes to a solver made for that; otherwise to the
// library's.
class PlaneWorld : public btDiscreteDynamicsWorld {
public:
    using btDiscreteDynamicsWorld::btDiscreteDynamicsWorld;

protected:
    void calculateSimulationIslands() override {}
    void solveConstraints(btContactSolverInfo& info) override;
    void createPredictiveContacts(btScalar timeStep) override;
    void predictUnconstraintMotion(btScalar timeStep) override;

private:
    btAlignedObjectArray<btCollisionObject*> bodies;
    btAlignedObjectArray<btPersistentManifold*> manifolds;
    btAlignedObjectArray<btTypedConstraint*> constraints;
    btAlignedObjectArray<btRigidBody*> swept;
    // The factor a damping leaves of a velocity over one tick, computed once per value.
    struct Damping {
        btScalar damping = -1, step = -1, factor = 1;
        btScalar Over(btScalar value, btScalar timeStep);
    } linearDamping, angularDamping;
    PlaneSolver planeSolver;
};

}  // namespace phys
