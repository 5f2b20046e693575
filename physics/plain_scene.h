#pragma once
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "core/vector3.h"

namespace phys {

// The yardstick the physics bench measures our scene against: the rigid-body library as it
// comes, with its default world, solver, broadphase and body settings, stepped in the same
// 1/300 s ticks. One departure: nothing sleeps, since nothing in our scene may. Only the bench
// uses it.
class PlainScene {
public:
    explicit PlainScene(const Vector3& gravity);
    ~PlainScene();
    PlainScene(const PlainScene&) = delete;
    PlainScene& operator=(const PlainScene&) = delete;

    // A fixed triangle mesh: vertices and three indices per triangle.
    void AddStaticMesh(const std::vector<Vector3>& vertices, const std::vector<uint32_t>& triangles);
    // A sphere moving only in the plane z = 0.
    void AddBall(float radius, float mass, const Vector3& position);
    // Boxes (each given by two opposite corners in the body's frame) joined into one body that
    // turns about the z axis through `pivot`, driven towards `motorSpeed` rad/s with at most
    // `motorForce` when one is given.
    struct Motor {
        float speed;
        float force;
    };
    void AddHingedBoxes(const std::vector<std::pair<Vector3, Vector3>>& boxes, float mass, const Vector3& pivot,
                        std::optional<Motor> motor);

    void Step(float seconds);
    // The balls' mean speed in the plane.
    float MeanBallSpeed() const;
    std::vector<Vector3> BallPositions() const;

private:
    struct World;
    std::unique_ptr<World> world;
};

}  // namespace phys
