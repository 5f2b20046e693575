#include "physics/plain_scene.h"

#include <btBulletDynamicsCommon.h>

#include <cmath>

#include "physics/bullet_convert.h"

namespace phys {

namespace {

constexpr float kTick = 1.0f / 300.0f;
constexpr int kMaxTicks = 10;

}  // namespace

struct PlainScene::World {
    btDefaultCollisionConfiguration configuration;
    btCollisionDispatcher dispatcher{&configuration};
    btDbvtBroadphase broadphase;
    btSequentialImpulseConstraintSolver solver;
    btDiscreteDynamicsWorld world{&dispatcher, &broadphase, &solver, &configuration};
    std::vector<std::unique_ptr<btCollisionShape>> shapes;
    std::vector<std::unique_ptr<btTriangleIndexVertexArray>> meshes;
    std::vector<std::vector<Vector3>> vertexData;
    std::vector<std::vector<int>> indexData;
    std::vector<std::unique_ptr<btRigidBody>> bodies;
    std::vector<std::unique_ptr<btTypedConstraint>> constraints;
    std::vector<btRigidBody*> balls;

    btRigidBody* AddBody(btCollisionShape* shape, float mass, const btTransform& place) {
        btVector3 inertia(0, 0, 0);
        if (mass > 0) shape->calculateLocalInertia(mass, inertia);
        btRigidBody::btRigidBodyConstructionInfo info(mass, nullptr, shape, inertia);
        info.m_startWorldTransform = place;
        bodies.push_back(std::make_unique<btRigidBody>(info));
        btRigidBody* body = bodies.back().get();
        if (mass > 0) body->setActivationState(DISABLE_DEACTIVATION);
        world.addRigidBody(body);
        return body;
    }

    ~World() {
        for (auto& constraint : constraints) world.removeConstraint(constraint.get());
        for (auto& body : bodies) world.removeRigidBody(body.get());
    }
};

PlainScene::PlainScene(const Vector3& gravity) : world(std::make_unique<World>()) {
    world->world.setGravity(ToBt(gravity));
}

PlainScene::~PlainScene() = default;

void PlainScene::AddStaticMesh(const std::vector<Vector3>& vertices, const std::vector<uint32_t>& triangles) {
    world->vertexData.push_back(vertices);
    world->indexData.emplace_back(triangles.begin(), triangles.end());
    auto mesh = std::make_unique<btTriangleIndexVertexArray>(
        int(triangles.size() / 3), world->indexData.back().data(), int(3 * sizeof(int)), int(vertices.size()),
        &world->vertexData.back()[0].x, int(sizeof(Vector3)));
    auto shape = std::make_unique<btBvhTriangleMeshShape>(mesh.get(), true);
    btTransform place;
    place.setIdentity();
    world->AddBody(shape.get(), 0, place);
    world->meshes.push_back(std::move(mesh));
    world->shapes.push_back(std::move(shape));
}

void PlainScene::AddBall(float radius, float mass, const Vector3& position) {
    world->shapes.push_back(std::make_unique<btSphereShape>(radius));
    btTransform place;
    place.setIdentity();
    place.setOrigin(ToBt(position));
    btRigidBody* ball = world->AddBody(world->shapes.back().get(), mass, place);
    ball->setLinearFactor(btVector3(1, 1, 0));
    world->balls.push_back(ball);
}

void PlainScene::AddHingedBoxes(const std::vector<std::pair<Vector3, Vector3>>& boxes, float mass,
                                const Vector3& pivot, std::optional<Motor> motor) {
    auto compound = std::make_unique<btCompoundShape>();
    for (const auto& [low, high] : boxes) {
        world->shapes.push_back(std::make_unique<btBoxShape>(ToBt((high - low) * 0.5f)));
        btTransform local;
        local.setIdentity();
        local.setOrigin(ToBt((low + high) * 0.5f));
        compound->addChildShape(local, world->shapes.back().get());
    }
    btTransform place;
    place.setIdentity();
    place.setOrigin(ToBt(pivot));
    btRigidBody* body = world->AddBody(compound.get(), mass, place);
    world->shapes.push_back(std::move(compound));
    auto hinge = std::make_unique<btHingeConstraint>(*body, btVector3(0, 0, 0), btVector3(0, 0, 1));
    if (motor) hinge->enableAngularMotor(true, motor->speed, motor->force * kTick);
    world->world.addConstraint(hinge.get(), true);
    world->constraints.push_back(std::move(hinge));
}

void PlainScene::Step(float seconds) { world->world.stepSimulation(seconds, kMaxTicks, kTick); }

float PlainScene::MeanBallSpeed() const {
    if (world->balls.empty()) return 0;
    double total = 0;
    for (const btRigidBody* ball : world->balls) {
        const btVector3& v = ball->getLinearVelocity();
        total += std::hypot(v.x(), v.y());
    }
    return float(total / double(world->balls.size()));
}

std::vector<Vector3> PlainScene::BallPositions() const {
    std::vector<Vector3> positions;
    for (const btRigidBody* ball : world->balls) positions.push_back(FromBt(ball->getWorldTransform().getOrigin()));
    return positions;
}

}  // namespace phys
