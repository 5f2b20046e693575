#include "physics/plane_world.h"

namespace phys {

namespace {

// A body the library stopped simulating (its bounds overflowed) takes no part; the scene
// takes it out of the world after the tick.
bool Simulated(const btCollisionObject* object) { return object->getActivationState() != DISABLE_SIMULATION; }

}  // namespace

btScalar PlaneWorld::Damping::Over(btScalar value, btScalar timeStep) {
    if (value != damping || timeStep != step) {
        damping = value;
        step = timeStep;
        factor = btPow(btScalar(1) - value, timeStep);
    }
    return factor;
}

void PlaneWorld::predictUnconstraintMotion(btScalar timeStep) {
    for (int i = 0; i < m_nonStaticRigidBodies.size(); ++i) {
        btRigidBody* body = m_nonStaticRigidBodies[i];
        if (body->isStaticOrKinematicObject()) continue;
        // As the library damps, without its two powers for every body and tick.
        body->setLinearVelocity(body->getLinearVelocity() * linearDamping.Over(body->getLinearDamping(), timeStep));
        body->setAngularVelocity(body->getAngularVelocity() *
                                 angularDamping.Over(body->getAngularDamping(), timeStep));
        // Where the body would be after the tick widens its bounds for the broadphase. A
        // sphere's bounds do not turn with it, so its turn is not worked out.
        btTransform& predicted = body->getInterpolationWorldTransform();
        if (body->getCollisionShape()->getShapeType() == SPHERE_SHAPE_PROXYTYPE) {
            predicted.setBasis(body->getWorldTransform().getBasis());
            predicted.setOrigin(body->getWorldTransform().getOrigin() + body->getLinearVelocity() * timeStep);
        } else {
            body->predictIntegratedTransform(timeStep, predicted);
        }
    }
}

void PlaneWorld::createPredictiveContacts(btScalar timeStep) {
    releasePredictiveContacts();
    // Only a body fast enough to have its path swept needs its motion predicted. The library
    // predicts every body to find those; bodies a little slower are still handed to it, as its
    // prediction rounds differently from this estimate.
    swept.resize(0);
    for (int i = 0; i < m_nonStaticRigidBodies.size(); ++i) {
        btRigidBody* body = m_nonStaticRigidBodies[i];
        body->setHitFraction(1);
        const btScalar threshold = body->getCcdSquareMotionThreshold();
        if (threshold > 0 && (body->getLinearVelocity() * timeStep).length2() > threshold * 0.81f) swept.push_back(body);
    }
    if (swept.size()) createPredictiveContactsInternal(&swept[0], swept.size(), timeStep);
}

void PlaneWorld::solveConstraints(btContactSolverInfo& info) {
    bodies.resize(0);
    for (int i = 0; i < m_collisionObjects.size(); ++i) {
        btCollisionObject* object = m_collisionObjects[i];
        if (!object->isStaticOrKinematicObject() && Simulated(object)) bodies.push_back(object);
    }
    manifolds.resize(0);
    btDispatcher* dispatcher = getDispatcher();
    for (int i = 0; i < dispatcher->getNumManifolds(); ++i) {
        btPersistentManifold* manifold = dispatcher->getManifoldByIndexInternal(i);
        const btCollisionObject *a = manifold->getBody0(), *b = manifold->getBody1();
        // Triggers keep manifolds too, but nothing pushes back from them.
        if (manifold->getNumContacts() > 0 && dispatcher->needsResponse(a, b) && Simulated(a) && Simulated(b))
            manifolds.push_back(manifold);
    }
    constraints.resize(0);
    for (int i = 0; i < m_constraints.size(); ++i)
        if (m_constraints[i]->isEnabled()) constraints.push_back(m_constraints[i]);

    if (planeSolver.Solve(bodies.size() ? &bodies[0] : nullptr, bodies.size(),
                          manifolds.size() ? &manifolds[0] : nullptr, manifolds.size(),
                          constraints.size() ? &constraints[0] : nullptr, constraints.size(), info))
        return;
    m_constraintSolver->prepareSolve(bodies.size(), manifolds.size());
    m_constraintSolver->solveGroup(bodies.size() ? &bodies[0] : nullptr, bodies.size(),
                                   manifolds.size() ? &manifolds[0] : nullptr, manifolds.size(),
                                   constraints.size() ? &constraints[0] : nullptr, constraints.size(), info,
                                   m_debugDrawer, dispatcher);
    m_constraintSolver->allSolved(info, m_debugDrawer);
}

}  // namespace phys
