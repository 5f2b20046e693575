#include "physics/plane_solver.h"

#include <btBulletDynamicsCommon.h>
#include <LinearMath/btTransformUtil.h>

#include <algorithm>
#include <cfloat>

namespace phys {

namespace {

// Rows whose J M⁻¹ Jᵀ is smaller than this move nothing. Far below what the heaviest body
// allowed (mass 1e9) gives, and far enough above zero that its inverse is a number.
constexpr float kEpsilon = 1e-20f;

// z of the cross product: how a push along d at lever r turns a body about z.
float Turn(const btVector3& r, float dx, float dy) { return float(r.x()) * dy - float(r.y()) * dx; }

float Dot(const float* j, const float* v) { return j[0] * v[0] + j[1] * v[1] + j[2] * v[2]; }

void Move(float* v, const float* m, float impulse) {
    v[0] += m[0] * impulse;
    v[1] += m[1] * impulse;
    v[2] += m[2] * impulse;
}

bool IsSphere(const btRigidBody* body) { return body->getCollisionShape()->getShapeType() == SPHERE_SHAPE_PROXYTYPE; }

// A hinge to the world about (nearly) the z axis.
bool IsPlaneHinge(const btHingeConstraint& hinge) {
    if (hinge.getRigidBodyB().getInvMass() != 0 || hinge.getRigidBodyA().getInvMass() == 0) return false;
    const btVector3 axis = hinge.getRigidBodyA().getWorldTransform().getBasis() * hinge.getAFrame().getBasis().getColumn(2);
    return std::abs(float(axis.z())) > 0.999f;
}

// The constraint that holds a body's origin at z = 0 and leaves it free otherwise.
bool IsPlaneHold(btGeneric6DofConstraint& hold) {
    if (hold.getRigidBodyA().getInvMass() != 0 || hold.getRigidBodyB().getInvMass() == 0) return false;
    btVector3 lower, upper;
    hold.getLinearLowerLimit(lower);
    hold.getLinearUpperLimit(upper);
    return lower.z() == 0 && upper.z() == 0 && lower.x() > upper.x() && lower.y() > upper.y();
}

}  // namespace

int PlaneSolver::Slot(const btCollisionObject* object) const {
    const int id = object->getCompanionId();
    return id >= 0 && id < int(rigid.size()) && rigid[id] == object ? id : int(rigid.size());
}

bool PlaneSolver::Gather(btCollisionObject** objects, int bodyCount, btTypedConstraint** constraints,
                         int constraintCount) {
    rigid.clear();
    setup.assign(size_t(bodyCount), Setup{});
    for (int i = 0; i < bodyCount; ++i) {
        btRigidBody* body = btRigidBody::upcast(objects[i]);
        if (!body) return false;
        body->setCompanionId(i);
        rigid.push_back(body);
    }
    for (int i = 0; i < constraintCount; ++i) {
        btTypedConstraint* constraint = constraints[i];
        if (constraint->getConstraintType() == HINGE_CONSTRAINT_TYPE) {
            auto* hinge = static_cast<btHingeConstraint*>(constraint);
            const int a = Slot(&hinge->getRigidBodyA());
            if (!IsPlaneHinge(*hinge) || a == bodyCount) return false;
            setup[a].heldZ = setup[a].heldTilt = true;
        } else if (constraint->getConstraintType() == D6_CONSTRAINT_TYPE) {
            auto* hold = static_cast<btGeneric6DofConstraint*>(constraint);
            const int b = Slot(&hold->getRigidBodyB());
            if (!IsPlaneHold(*hold) || b == bodyCount) return false;
            setup[b].heldZ = true;
        } else {
            return false;
        }
    }
    for (int i = 0; i < bodyCount; ++i) {
        const btRigidBody* body = rigid[i];
        Setup& s = setup[i];
        const btVector3& linear = body->getLinearFactor();
        const btVector3& angular = body->getAngularFactor();
        s.sphere = IsSphere(body);
        // A body that could leave the plane or tip over needs all six degrees of freedom.
        if (!(s.heldZ || linear.z() == 0)) return false;
        if (!(s.heldTilt || s.sphere || (angular.x() == 0 && angular.y() == 0))) return false;
    }
    return true;
}

bool PlaneSolver::Solve(btCollisionObject** objects, int bodyCount, btPersistentManifold** manifolds,
                        int manifoldCount, btTypedConstraint** constraints, int constraintCount,
                        const btContactSolverInfo& info) {
    if (!Gather(objects, bodyCount, constraints, constraintCount)) {
        for (int i = 0; i < bodyCount; ++i) objects[i]->setCompanionId(-1);
        return false;
    }
    const float dt = info.m_timeStep;
    state.resize(size_t(bodyCount) + 1);
    pinned.resize(size_t(bodyCount) + 1);
    for (int i = 0; i < bodyCount; ++i) {
        const btRigidBody* body = rigid[i];
        Setup& s = setup[i];
        // This tick's forces count from the start, as the library counts them.
        const btVector3 v = body->getLinearVelocity() + body->getTotalForce() * body->getInvMass() * dt;
        const btVector3 w = body->getAngularVelocity() + body->getTotalTorque() * body->getInvInertiaTensorWorld() * dt;
        s.v0[0] = v.x();
        s.v0[1] = v.y();
        s.v0[2] = w.z();
        const btVector3& linear = body->getLinearFactor();
        s.bodyInvMass = body->getInvMass();
        s.invMass[0] = body->getInvMass() * linear.x();
        s.invMass[1] = body->getInvMass() * linear.y();
        s.invMass[2] = body->getInvInertiaTensorWorld()[2][2] * body->getAngularFactor().z();
        state[i] = Body{{s.v0[0], s.v0[1], s.v0[2]}, {0, 0, 0}};
        pinned[i] = s.invMass[0] == 0 && s.invMass[1] == 0;
    }
    state[bodyCount] = Body{{0, 0, 0}, {0, 0, 0}};
    pinned[bodyCount] = true;

    jointRows.clear();
    contactRows.clear();
    frictionRows.clear();
    points.clear();
    for (int i = 0; i < constraintCount; ++i)
        if (constraints[i]->getConstraintType() == HINGE_CONSTRAINT_TYPE) AddHinge(constraints[i], info);
    for (int i = 0; i < manifoldCount; ++i) {
        // Manifolds are large and scattered; asking for the next ones early hides the wait.
        if (i + 2 < manifoldCount) {
            __builtin_prefetch(manifolds[i + 2]);
            __builtin_prefetch(reinterpret_cast<const char*>(manifolds[i + 2]) + 64);
            __builtin_prefetch(reinterpret_cast<const char*>(manifolds[i + 2]) + 128);
        }
        AddContacts(manifolds[i], info);
    }
    Iterate(info);
    WriteBack(info);
    return true;
}

void PlaneSolver::MakeRow(Row& row, int a, int b, const float ja[3], const float jb[3]) const {
    row.a = a;
    row.b = b;
    // As the library does, J M⁻¹ Jᵀ counts a body's whole mass along x and y even when it
    // cannot move that way: a wheel pinned at its axis, touched along a line through the axis,
    // then takes a gentle push it cannot follow instead of a spin to close the gap by turning.
    for (int k = 0; k < 3; ++k) {
        row.ja[k] = ja[k];
        row.jb[k] = jb[k];
        row.ma[k] = a < int(rigid.size()) ? setup[a].invMass[k] * ja[k] : 0.0f;
        row.mb[k] = b < int(rigid.size()) ? setup[b].invMass[k] * jb[k] : 0.0f;
    }
    const float massA = a < int(rigid.size()) ? setup[a].bodyInvMass : 0.0f;
    const float massB = b < int(rigid.size()) ? setup[b].bodyInvMass : 0.0f;
    const float diag = massA * (ja[0] * ja[0] + ja[1] * ja[1]) + ja[2] * row.ma[2] +
                       massB * (jb[0] * jb[0] + jb[1] * jb[1]) + jb[2] * row.mb[2];
    row.invDiag = diag > kEpsilon ? 1.0f / diag : 0.0f;
    row.diag = diag > kEpsilon ? diag : 0.0f;
    row.target = row.pushTarget = 0;
    row.lower = -FLT_MAX;
    row.upper = FLT_MAX;
    row.applied = row.pushApplied = 0;
    row.friction = 0;
    row.normal = -1;
}

// J·v before any impulse of the tick.
float PlaneSolver::RelativeVelocity(const Row& row) const {
    float sum = 0;
    const int bodies = int(rigid.size());
    for (int k = 0; k < 3; ++k) {
        if (row.a < bodies) sum += row.ja[k] * setup[row.a].v0[k];
        if (row.b < bodies) sum += row.jb[k] * setup[row.b].v0[k];
    }
    return sum;
}

// Moves the row's two bodies by an impulse: their velocities, or their split-impulse motion.
// The world's slot is never moved: an impulse that is no number (a body already running away)
// would otherwise reach every body that touches the world.
template <bool kPush>
inline void PlaneSolver::Impulse(const Row& row, Body* bodies, int world, float impulse) {
    if (row.a != world) Move(kPush ? bodies[row.a].push : bodies[row.a].v, row.ma, impulse);
    if (row.b != world) Move(kPush ? bodies[row.b].push : bodies[row.b].v, row.mb, impulse);
}

void PlaneSolver::Apply(const Row& row, float impulse) { Impulse<false>(row, state.data(), int(rigid.size()), impulse); }

void PlaneSolver::AddHinge(btTypedConstraint* constraint, const btContactSolverInfo& info) {
    auto* hinge = static_cast<btHingeConstraint*>(constraint);
    const btRigidBody& bodyA = hinge->getRigidBodyA();
    const btRigidBody& bodyB = hinge->getRigidBodyB();
    const int a = Slot(&bodyA), b = Slot(&bodyB);
    const btTransform& ta = bodyA.getCenterOfMassTransform();
    const btTransform& tb = bodyB.getCenterOfMassTransform();
    const btVector3 pivotA = ta * hinge->getAFrame().getOrigin();
    const btVector3 pivotB = tb * hinge->getBFrame().getOrigin();
    const btVector3 ra = pivotA - ta.getOrigin(), rb = pivotB - tb.getOrigin();
    // The two pivots are pulled together along x and y, a fifth of the gap each tick.
    const float pull = info.m_erp / info.m_timeStep;
    for (int axis = 0; axis < 2; ++axis) {
        const float dx = axis == 0 ? 1.0f : 0.0f, dy = axis == 1 ? 1.0f : 0.0f;
        const float ja[3] = {dx, dy, Turn(ra, dx, dy)};
        const float jb[3] = {-dx, -dy, -Turn(rb, dx, dy)};
        Row& row = jointRows.emplace_back();
        MakeRow(row, a, b, ja, jb);
        row.target = pull * float(pivotB[axis] - pivotA[axis]);
    }
    if (hinge->getEnableAngularMotor()) {
        const btVector3 axis = ta.getBasis() * hinge->getAFrame().getBasis().getColumn(2);
        const float sign = axis.z() > 0 ? 1.0f : -1.0f;
        const float ja[3] = {0, 0, sign}, jb[3] = {0, 0, -sign};
        Row& row = jointRows.emplace_back();
        MakeRow(row, a, b, ja, jb);
        row.target = hinge->getMotorTargetVelocity();
        row.lower = -hinge->getMaxMotorImpulse();
        row.upper = hinge->getMaxMotorImpulse();
    }
}

void PlaneSolver::AddContacts(btPersistentManifold* manifold, const btContactSolverInfo& info) {
    const btCollisionObject* objectA = manifold->getBody0();
    const btCollisionObject* objectB = manifold->getBody1();
    const int a = Slot(objectA), b = Slot(objectB);
    // Between two bodies neither of which can move along the plane (a wheel on its axle and
    // the track, or two wheels) nothing is solved, as in the library: a wheel set into a slot
    // of the track may scrape it and still turn freely.
    if (pinned[a] && pinned[b]) return;
    const btVector3& originA = objectA->getWorldTransform().getOrigin();
    const btVector3& originB = objectB->getWorldTransform().getOrigin();
    const float invDt = 1.0f / info.m_timeStep;
    const bool warm = info.m_solverMode & SOLVER_USE_WARMSTARTING;
    for (int p = 0; p < manifold->getNumContacts(); ++p) {
        btManifoldPoint& point = manifold->getContactPoint(p);
        if (point.getDistance() > manifold->getContactProcessingThreshold()) continue;
        const btVector3& n = point.m_normalWorldOnB;
        const float length = std::sqrt(float(n.x() * n.x() + n.y() * n.y()));
        // A push straight along z moves nothing that keeps to the plane.
        if (length < 1e-6f) continue;
        const btVector3 ra = point.getPositionWorldOnA() - originA;
        const btVector3 rb = point.getPositionWorldOnB() - originB;

        const float nx = n.x(), ny = n.y();
        const float na[3] = {nx, ny, Turn(ra, nx, ny)}, nb[3] = {-nx, -ny, -Turn(rb, nx, ny)};
        const int normalIndex = int(contactRows.size());
        Row& contact = contactRows.emplace_back();
        MakeRow(contact, a, b, na, nb);
        const float approach = RelativeVelocity(contact);
        float bounce = 0;
        if (std::abs(approach) >= info.m_restitutionVelocityThreshold)
            bounce = std::max(0.0f, point.m_combinedRestitution * -approach);
        const float penetration = point.getDistance() + info.m_linearSlop;
        const bool split = info.m_splitImpulse && penetration <= info.m_splitImpulsePenetrationThreshold;
        float positional = 0, velocity = bounce;
        if (penetration > 0)
            velocity -= penetration * invDt;  // a gap closes this tick, not sooner
        else
            positional = -penetration * (split ? info.m_erp2 : info.m_erp) * invDt;
        contact.target = split ? velocity : velocity + positional;
        contact.pushTarget = split ? positional : 0.0f;
        contact.lower = 0;
        contact.upper = 1e10f;
        contact.applied = warm ? point.m_appliedImpulse * info.m_warmstartingFactor : 0.0f;
        Apply(contact, contact.applied);
        points.push_back(&point);

        // Friction along the plane's tangent of the contact, bounded by the normal impulse.
        const float tx = -ny / length, ty = nx / length;
        const float ta[3] = {tx, ty, Turn(ra, tx, ty)}, tb[3] = {-tx, -ty, -Turn(rb, tx, ty)};
        Row& friction = frictionRows.emplace_back();
        MakeRow(friction, a, b, ta, tb);
        friction.friction = point.m_combinedFriction;
        friction.normal = normalIndex;
        friction.applied = warm ? point.m_appliedImpulseLateral1 * info.m_warmstartingFactor : 0.0f;
        Apply(friction, friction.applied);
    }
}

// One row's step: the impulse that brings J·v to the row's target, kept within its bounds;
// returns the squared change, the measure the passes stop on. The push rows work on the
// split-impulse motion instead of the velocity.
template <bool kPush>
inline float PlaneSolver::Step(Row& row, Body* bodies, int world) {
    const float* va = kPush ? bodies[row.a].push : bodies[row.a].v;
    const float* vb = kPush ? bodies[row.b].push : bodies[row.b].v;
    float& applied = kPush ? row.pushApplied : row.applied;
    const float target = kPush ? row.pushTarget : row.target;
    float delta = (target - Dot(row.ja, va) - Dot(row.jb, vb)) * row.invDiag;
    const float sum = applied + delta;
    if (sum < row.lower) {
        delta = row.lower - applied;
        applied = row.lower;
    } else if (sum > row.upper) {
        delta = row.upper - applied;
        applied = row.upper;
    } else {
        applied = sum;
    }
    Impulse<kPush>(row, bodies, world, delta);
    const float residual = delta * row.diag;
    return residual * residual;
}

void PlaneSolver::Iterate(const btContactSolverInfo& info) {
    const float threshold = info.m_leastSquaresResidualThreshold;
    const int iterations = std::max(1, info.m_numIterations);
    const int world = int(rigid.size());

    // Deep overlaps are pushed apart first, in a motion of their own that adds no speed.
    // Only those rows take part, so the passes cost nothing in a pile that overlaps little.
    pushRows.clear();
    for (Row& row : contactRows)
        if (row.pushTarget != 0) pushRows.push_back(&row);
    if (info.m_splitImpulse && !pushRows.empty()) {
        for (int iteration = 0; iteration < iterations; ++iteration) {
            float residual = 0;
            for (Row* row : pushRows) residual = std::max(residual, Step<true>(*row, state.data(), world));
            if (residual <= threshold) break;
        }
    }
    for (int iteration = 0; iteration < iterations; ++iteration) {
        float residual = 0;
        for (Row& row : jointRows) residual = std::max(residual, Step<false>(row, state.data(), world));
        for (Row& row : contactRows) residual = std::max(residual, Step<false>(row, state.data(), world));
        for (Row& row : frictionRows) {
            const float normal = contactRows[row.normal].applied;
            if (normal <= 0) continue;
            row.lower = -row.friction * normal;
            row.upper = row.friction * normal;
            residual = std::max(residual, Step<false>(row, state.data(), world));
        }
        if (residual <= threshold) break;
    }
}

void PlaneSolver::WriteBack(const btContactSolverInfo& info) {
    for (size_t i = 0; i < points.size(); ++i) {
        points[i]->m_appliedImpulse = contactRows[i].applied;
        points[i]->m_appliedImpulseLateral1 = frictionRows[i].applied;
    }
    for (size_t i = 0; i < rigid.size(); ++i) {
        btRigidBody* body = rigid[i];
        const Body& s = state[i];
        body->setLinearVelocity(btVector3(s.v[0], s.v[1], 0));
        // A ball's spin about x and y comes from nothing here and is left as it is.
        const btVector3& w = body->getAngularVelocity();
        body->setAngularVelocity(setup[i].sphere ? btVector3(w.x(), w.y(), s.v[2]) : btVector3(0, 0, s.v[2]));
        if (s.push[0] != 0 || s.push[1] != 0 || s.push[2] != 0) {
            btTransform moved;
            btTransformUtil::integrateTransform(body->getWorldTransform(), btVector3(s.push[0], s.push[1], 0),
                                                btVector3(0, 0, s.push[2] * info.m_splitImpulseTurnErp),
                                                info.m_timeStep, moved);
            body->setWorldTransform(moved);
        }
        body->setCompanionId(-1);
    }
}

}  // namespace phys
