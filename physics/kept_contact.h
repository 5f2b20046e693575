#pragma once
#include <BulletCollision/BroadphaseCollision/btDispatcher.h>
#include <BulletCollision/CollisionDispatch/btActivatingCollisionAlgorithm.h>
#include <BulletCollision/CollisionDispatch/btCollisionCreateFunc.h>
#include <BulletCollision/NarrowPhaseCollision/btPersistentManifold.h>

#include <utility>

namespace phys {

// A collision algorithm of ours with a manifold of its own, whose points it keeps from tick
// to tick while they touch, so the solver starts each tick from the impulses of the last.
class KeptContact : public btActivatingCollisionAlgorithm {
public:
    // The manifold's first body is `first`, whatever order the pair comes in.
    KeptContact(const btCollisionAlgorithmConstructionInfo& info, const btCollisionObjectWrapper* a,
                const btCollisionObjectWrapper* b, const btCollisionObject* first, const btCollisionObject* second)
        : btActivatingCollisionAlgorithm(info, a, b), manifold(m_dispatcher->getNewManifold(first, second)) {}
    ~KeptContact() override { m_dispatcher->releaseManifold(manifold); }

    btScalar calculateTimeOfImpact(btCollisionObject*, btCollisionObject*, const btDispatcherInfo&,
                                   btManifoldResult*) override {
        return 1;
    }
    void getAllContactManifolds(btManifoldArray& manifolds) override { manifolds.push_back(manifold); }

    // Makes an algorithm of type T in the dispatcher's pool, as the library makes its own.
    template <class T, class... Args>
    static btCollisionAlgorithm* Make(btCollisionAlgorithmConstructionInfo& info, Args&&... args) {
        void* memory = info.m_dispatcher1->allocateCollisionAlgorithm(sizeof(T));
        return new (memory) T(info, std::forward<Args>(args)...);
    }

protected:
    btPersistentManifold* const manifold;
};

}  // namespace phys
