// Any bytes as a collision map of a fixed mesh (wheel_mesh.h). A map that the check calls
// valid is then played: the wheel hangs on its hinge colliding through the map's pieces, a ball
// is thrown onto a paddle, and after a third of a second both still have finite positions and
// velocities. A map that makes collision slow shows up through libFuzzer's -timeout.
//
// A map ends in a checksum of everything before it, which mutated bytes almost never keep.
// Every input is therefore checked twice, as it is and with its checksum made right, so the
// fuzzer also reaches the checks behind the checksum.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "physics/actor.h"
#include "physics/memory_streams.h"
#include "physics/physics_system.h"
#include "physics/scene.h"
#include "physics/triangle_mesh.h"
#include "tests/fuzz/fuzz_check.h"
#include "tests/fuzz/wheel_mesh.h"

namespace {

const WheelMesh& Wheel() {
    static const WheelMesh wheel = MakeWheelMesh();
    return wheel;
}

// The map's checksum: 64-bit FNV-1a of every byte before it.
uint64_t Checksum(const uint8_t* bytes, size_t size) {
    uint64_t hash = 14695981039346656037ull;
    for (size_t i = 0; i < size; ++i) hash = (hash ^ bytes[i]) * 1099511628211ull;
    return hash;
}

std::vector<uint8_t> WithChecksumMadeRight(std::vector<uint8_t> bytes) {
    if (bytes.size() < sizeof(uint64_t)) return bytes;
    const size_t body = bytes.size() - sizeof(uint64_t);
    const uint64_t checksum = Checksum(bytes.data(), body);
    std::memcpy(bytes.data() + body, &checksum, sizeof checksum);
    return bytes;
}

phys::PMap AsPMap(std::vector<uint8_t>& bytes) { return phys::PMap{uint32_t(bytes.size()), bytes.data()}; }

// A fresh mesh for every check: a mesh keeps the first valid map it is given.
phys::MapCheck Check(std::vector<uint8_t>& bytes) {
    phys::TriangleMesh mesh(Wheel().points, Wheel().indices);
    return mesh.LoadPMap(AsPMap(bytes));
}

bool Finite(const Vector3& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }

void Play(std::vector<uint8_t>& map) {
    const WheelMesh& wheel = Wheel();
    PhysicsSystem physics;
    Require(physics.Startup(), "the physics starts");
    phys::Scene& scene = *physics.GetScene();

    phys::TriangleMeshDesc meshDesc;
    meshDesc.numVertices = wheel.VertexCount();
    meshDesc.numTriangles = wheel.TriangleCount();
    meshDesc.points = wheel.points.data();
    meshDesc.triangles = wheel.indices.data();
    MemoryWriteBuffer cooked;
    Require(phys::CookTriangleMesh(meshDesc, cooked), "the wheel cooks");
    phys::TriangleMesh* mesh = scene.CreateTriangleMesh(MemoryReadBuffer(cooked.data));
    Require(mesh != nullptr, "the scene reads the cooked wheel");
    Require(mesh->LoadPMap(AsPMap(map)) == phys::MapCheck::Valid, "the scene's wheel takes a map its copy took");

    phys::ActorDesc wheelDesc;
    wheelDesc.kind = phys::ShapeKind::Mesh;
    wheelDesc.mesh = mesh;
    wheelDesc.mass = 2.0f;
    phys::Actor* turbine = scene.CreateActor(wheelDesc);
    if (!turbine) {
        // Pieces that make no body (none at all, or flat ones): the game goes on without it.
        scene.ReleaseTriangleMesh(mesh);
        return;
    }
    physics.CreateRevoluteJoint(turbine, 0, 0, 0, 0);
    phys::Actor* ball = physics.CreateSphereActor(0.5f, 1.0f, 0);
    Require(ball != nullptr, "the ball is made");
    ball->SetGlobalPosition({2.75f, 1.5f, 0});  // over the right paddle
    ball->SetLinearVelocity({0, -8, 0});
    physics.SetGravity({0, -9.81f, 0});
    for (int frame = 0; frame < 20; ++frame) physics.Step(1.0f / 60.0f);

    Require(Finite(turbine->GetGlobalPosition()) && Finite(turbine->GetAngularVelocity()),
            "a wheel colliding through a valid map stays finite");
    Require(Finite(ball->GetGlobalPosition()) && Finite(ball->GetLinearVelocity()),
            "a ball striking a valid map stays finite");
}

// Once per process: a map computed for the wheel is valid, has the checksum this harness
// computes, and plays. Should the map format drift from this harness, it fails here rather
// than fuzzing nothing but the checksum from then on.
void CheckHarness() {
    phys::TriangleMesh mesh(Wheel().points, Wheel().indices);
    phys::PMap map;
    Require(phys::CreatePMap(map, mesh, 64), "the wheel has a collision map");
    std::vector<uint8_t> bytes(map.data, map.data + map.dataSize);
    phys::ReleasePMap(map);
    Require(WithChecksumMadeRight(bytes) == bytes, "the harness computes a map's checksum as the physics does");
    Require(Check(bytes) == phys::MapCheck::Valid, "a map computed for the wheel is valid for it");
    Play(bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool harnessChecked = (CheckHarness(), true);
    (void)harnessChecked;

    std::vector<uint8_t> asGiven(data, data + size);
    if (Check(asGiven) == phys::MapCheck::Valid) Play(asGiven);
    std::vector<uint8_t> madeRight = WithChecksumMadeRight(asGiven);
    if (madeRight != asGiven && Check(madeRight) == phys::MapCheck::Valid) Play(madeRight);
    return 0;
}
