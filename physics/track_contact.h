#pragma once
#include "physics/kept_contact.h"

namespace phys {

class PlaneProfile;

// A ball against a track mesh. While the ball stays in the plane z = 0 and the mesh is an
// outline drawn out along z (it has a PlaneProfile), the ball touches the outline's segments:
// a circle against lines, with points kept from tick to tick for the solver to warm-start
// from. Anything else (a ball free to leave the plane, a mesh of another shape, a track
// turned out of the plane) goes to the library's own algorithm.
class TrackContact : public KeptContact {
public:
    TrackContact(const btCollisionAlgorithmConstructionInfo& info, const btCollisionObjectWrapper* a,
                 const btCollisionObjectWrapper* b, btCollisionAlgorithmCreateFunc* general);
    ~TrackContact() override;

    void processCollision(const btCollisionObjectWrapper* a, const btCollisionObjectWrapper* b,
                          const btDispatcherInfo& dispatchInfo, btManifoldResult* result) override;
    void getAllContactManifolds(btManifoldArray& manifolds) override;

    // Made for one order of the two shape types; `general` is the library's algorithm for it.
    struct CreateFunc : btCollisionAlgorithmCreateFunc {
        explicit CreateFunc(btCollisionAlgorithmCreateFunc* general) : general(general) {}
        btCollisionAlgorithm* CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                       const btCollisionObjectWrapper* a,
                                                       const btCollisionObjectWrapper* b) override;
        btCollisionAlgorithmCreateFunc* general;
    };

private:
    // The segments the ball touches, written into the manifold.
    void TouchSegments(const btCollisionObjectWrapper* ball, const btCollisionObjectWrapper* track,
                       const PlaneProfile& profile);
    void DropGeneral();

    btCollisionAlgorithmCreateFunc* generalCreate;
    btCollisionAlgorithm* general = nullptr;
};

}  // namespace phys
