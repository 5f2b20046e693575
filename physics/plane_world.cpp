#include "physics/plane_world.h"

namespace phys {

namespace {

// A body the library stopped simulating (its bounds overflowed) takes no part; the scene
// takes it out of the world after the tick.
bool Simulated(const btCollisionObject* object) { return object->getActivationState() != DISABLE_SIMULATION; }

}  // namespace

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

    m_constraintSolver->prepareSolve(bodies.size(), manifolds.size());
    m_constraintSolver->solveGroup(bodies.size() ? &bodies[0] : nullptr, bodies.size(),
                                   manifolds.size() ? &manifolds[0] : nullptr, manifolds.size(),
                                   constraints.size() ? &constraints[0] : nullptr, constraints.size(), info,
                                   m_debugDrawer, dispatcher);
    m_constraintSolver->allSolved(info, m_debugDrawer);
}

}  // namespace phys
