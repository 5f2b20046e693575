#pragma once
#include <vector>

class btCollisionObject;
class btManifoldPoint;
class btPersistentManifold;
class btRigidBody;
class btTypedConstraint;
struct btContactSolverInfo;

namespace phys {

// Contacts and joints for bodies that move in the plane z = 0: each slides along x and y and
// turns about z, three numbers where the library's solver keeps six, in flat arrays. It does
// what the library's sequential-impulse solver does with them (warm starting, restitution,
// split-impulse recovery of deep overlaps, friction bounded by the normal impulse, joints
// first, then contacts, then friction, in the order given), so the game behaves the same,
// only faster.
//
// The joints it knows are the game's: a hinge about z to the world, with or without a motor,
// and the constraint that holds a body's origin in the plane.
class PlaneSolver {
public:
    // Solves one tick for every body, contact and joint given. False, having changed nothing,
    // when a body or joint does not keep to the plane: the library's solver takes it then.
    bool Solve(btCollisionObject** bodies, int bodyCount, btPersistentManifold** manifolds, int manifoldCount,
               btTypedConstraint** constraints, int constraintCount, const btContactSolverInfo& info);

private:
    // A body's motion in the plane: velocity (vx, vy, w about z) and the split-impulse push.
    struct Body {
        float v[3];
        float push[3];
    };
    struct Setup {
        float v0[3];        // velocity before any impulse of the tick, forces included
        float invMass[3];   // along x, along y, and about z; 0 where it cannot move
        float bodyInvMass;  // of the whole body
        bool sphere;
        bool heldZ, heldTilt;  // by a joint
    };
    // One scalar constraint: drives J·v towards target, its impulse kept within [lower, upper].
    struct Row {
        int a, b;              // body slots; the last slot is the world, which never moves
        float ja[3], jb[3];    // how the row reads each body's motion
        float ma[3], mb[3];    // and how an impulse of one moves it
        float invDiag, diag;   // 1 / (J M⁻¹ Jᵀ) and J M⁻¹ Jᵀ; both 0 for a row that moves nothing
        float target, pushTarget;
        float lower, upper;
        float applied, pushApplied;
        float friction;        // friction rows: the coefficient
        int normal;            // friction rows: their contact row
    };

    bool Gather(btCollisionObject** objects, int bodyCount, btTypedConstraint** constraints, int constraintCount);
    int Slot(const btCollisionObject* object) const;
    void MakeRow(Row& row, int a, int b, const float ja[3], const float jb[3]) const;
    float RelativeVelocity(const Row& row) const;
    void Apply(const Row& row, float impulse);
    template <bool kPush>
    static void Impulse(const Row& row, Body* bodies, int world, float impulse);
    template <bool kPush>
    static float Step(Row& row, Body* bodies, int world);
    void AddHinge(btTypedConstraint* constraint, const btContactSolverInfo& info);
    void AddContacts(btPersistentManifold* manifold, const btContactSolverInfo& info);
    void Iterate(const btContactSolverInfo& info);
    void WriteBack(const btContactSolverInfo& info);

    std::vector<btRigidBody*> rigid;
    std::vector<Setup> setup;
    std::vector<Body> state;
    std::vector<char> pinned;  // per slot: the body cannot move along x or y (the world cannot)
    std::vector<Row> jointRows, contactRows, frictionRows;
    std::vector<Row*> pushRows;  // contact rows with a split-impulse target
    std::vector<btManifoldPoint*> points;  // of the contact rows, in order
};

}  // namespace phys
