#include "physics/track_contact.h"

#include <btBulletDynamicsCommon.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "physics/plane_profile.h"
#include "physics/surface_contacts.h"

namespace phys {

namespace {

constexpr int kMaxPoints = 4;  // what a manifold holds

bool IsBall(const btCollisionObjectWrapper* wrapper) {
    return wrapper->getCollisionShape()->getShapeType() == SPHERE_SHAPE_PROXYTYPE;
}

// Whether a transform keeps the plane z = 0 where it is: a turn about z and a shift in x, y.
bool KeepsPlane(const btTransform& t) {
    const btMatrix3x3& r = t.getBasis();
    return r[2][2] == 1 && r[0][2] == 0 && r[1][2] == 0 && r[2][0] == 0 && r[2][1] == 0 && t.getOrigin().z() == 0;
}

struct Touch {
    uint32_t segment;
    float qx, qy;  // the nearest point of the segment, in the track's frame
    float d2;      // squared distance from the ball's centre
};

}  // namespace

TrackContact::TrackContact(const btCollisionAlgorithmConstructionInfo& info, const btCollisionObjectWrapper* a,
                           const btCollisionObjectWrapper* b, btCollisionAlgorithmCreateFunc* general)
    : KeptContact(info, a, b, (IsBall(a) ? a : b)->getCollisionObject(), (IsBall(a) ? b : a)->getCollisionObject()),
      generalCreate(general) {}

TrackContact::~TrackContact() { DropGeneral(); }

void TrackContact::DropGeneral() {
    if (!general) return;
    general->~btCollisionAlgorithm();
    m_dispatcher->freeCollisionAlgorithm(general);
    general = nullptr;
}

void TrackContact::getAllContactManifolds(btManifoldArray& manifolds) {
    KeptContact::getAllContactManifolds(manifolds);
    if (general) general->getAllContactManifolds(manifolds);
}

void TrackContact::processCollision(const btCollisionObjectWrapper* a, const btCollisionObjectWrapper* b,
                                    const btDispatcherInfo& dispatchInfo, btManifoldResult* result) {
    const btCollisionObjectWrapper* ball = IsBall(a) ? a : b;
    const btCollisionObjectWrapper* track = ball == a ? b : a;
    const auto* profile = static_cast<const PlaneProfile*>(track->getCollisionShape()->getUserPointer());
    const btRigidBody* body = btRigidBody::upcast(ball->getCollisionObject());
    const btScalar radius = static_cast<const btSphereShape*>(ball->getCollisionShape())->getRadius();
    const bool inPlane = profile && body && body->getLinearFactor().z() == 0 &&
                         std::abs(ball->getWorldTransform().getOrigin().z()) < 1e-4f &&
                         radius + manifold->getContactBreakingThreshold() < profile->Clearance() &&
                         KeepsPlane(track->getWorldTransform());
    if (inPlane) {
        DropGeneral();
        TouchSegments(ball, track, *profile);
        return;
    }
    manifold->clearManifold();
    if (!general) {
        btCollisionAlgorithmConstructionInfo info(m_dispatcher, 1);
        general = generalCreate->CreateCollisionAlgorithm(info, a, b);
    }
    general->processCollision(a, b, dispatchInfo, result);
}

void TrackContact::TouchSegments(const btCollisionObjectWrapper* ball, const btCollisionObjectWrapper* track,
                                 const PlaneProfile& profile) {
    static std::vector<uint32_t> near;
    static std::vector<Touch> touches;
    const btTransform& ballPlace = ball->getWorldTransform();
    const btTransform& trackPlace = track->getWorldTransform();
    const btScalar radius = static_cast<const btSphereShape*>(ball->getCollisionShape())->getRadius();
    const btVector3 centre = trackPlace.invXform(ballPlace.getOrigin());
    const float cx = centre.x(), cy = centre.y();
    const float reach = radius + manifold->getContactBreakingThreshold();
    profile.Near(cx - reach, cy - reach, cx + reach, cy + reach, near);

    touches.clear();
    for (uint32_t index : near) {
        const PlaneProfile::Segment& s = profile.Segments()[index];
        const float dx = s.bx - s.ax, dy = s.by - s.ay;
        const float t = std::clamp(((cx - s.ax) * dx + (cy - s.ay) * dy) / (dx * dx + dy * dy), 0.0f, 1.0f);
        const float qx = s.ax + t * dx, qy = s.ay + t * dy;
        const float d2 = (cx - qx) * (cx - qx) + (cy - qy) * (cy - qy);
        if (d2 >= reach * reach) continue;
        // Two segments meeting at a corner the ball touches make one point, not two.
        const bool again = std::any_of(touches.begin(), touches.end(), [&](const Touch& k) {
            return std::abs(k.qx - qx) < 1e-5f && std::abs(k.qy - qy) < 1e-5f;
        });
        if (!again) touches.push_back({index, qx, qy, d2});
    }
    if (touches.size() > kMaxPoints) {
        std::stable_sort(touches.begin(), touches.end(), [](const Touch& x, const Touch& y) { return x.d2 < y.d2; });
        touches.resize(kMaxPoints);
    }

    // Points of segments no longer touched go; the others are moved, keeping their impulses.
    for (int i = manifold->getNumContacts() - 1; i >= 0; --i) {
        const int segment = manifold->getContactPoint(i).m_index1;
        if (std::none_of(touches.begin(), touches.end(), [segment](const Touch& k) { return int(k.segment) == segment; }))
            manifold->removeContactPoint(i);
    }
    for (const Touch& touch : touches) {
        const float d = std::sqrt(touch.d2);
        btVector3 normal;
        if (d > 1e-6f) {
            normal = btVector3((cx - touch.qx) / d, (cy - touch.qy) / d, 0);
        } else {
            // The centre right on the line: out by the segment's left side.
            const PlaneProfile::Segment& s = profile.Segments()[touch.segment];
            const float length = std::hypot(s.bx - s.ax, s.by - s.ay);
            normal = btVector3(-(s.by - s.ay) / length, (s.bx - s.ax) / length, 0);
        }
        const btVector3 worldNormal = trackPlace.getBasis() * normal;
        const btVector3 onTrack = trackPlace * btVector3(touch.qx, touch.qy, 0);
        const btVector3 onBall = ballPlace.getOrigin() - worldNormal * radius;
        const btScalar distance = d - radius;

        btManifoldPoint* point = nullptr;
        for (int i = 0; i < manifold->getNumContacts() && !point; ++i)
            if (manifold->getContactPoint(i).m_index1 == int(touch.segment)) point = &manifold->getContactPoint(i);
        if (!point) {
            btManifoldPoint fresh(ballPlace.invXform(onBall), btVector3(touch.qx, touch.qy, 0), worldNormal, distance);
            fresh.m_positionWorldOnA = onBall;
            fresh.m_positionWorldOnB = onTrack;
            fresh.m_index1 = int(touch.segment);
            SetSurface(fresh, ball->getCollisionObject(), track->getCollisionObject());
            manifold->addManifoldPoint(fresh);
            continue;
        }
        point->m_localPointA = ballPlace.invXform(onBall);
        point->m_localPointB = btVector3(touch.qx, touch.qy, 0);
        point->m_positionWorldOnA = onBall;
        point->m_positionWorldOnB = onTrack;
        point->m_normalWorldOnB = worldNormal;
        point->m_distance1 = distance;
        ++point->m_lifeTime;
        SetSurface(*point, ball->getCollisionObject(), track->getCollisionObject());
    }
}

btCollisionAlgorithm* TrackContact::CreateFunc::CreateCollisionAlgorithm(btCollisionAlgorithmConstructionInfo& info,
                                                                        const btCollisionObjectWrapper* a,
                                                                        const btCollisionObjectWrapper* b) {
    return Make<TrackContact>(info, a, b, general);
}

}  // namespace phys
