// PhysicsSystem::CreateMeshActor: cooks the arrays, reads the cooked mesh back and builds an
// actor on it.
#include "physics/actor.h"
#include "physics/memory_streams.h"
#include "physics/physics_system.h"
#include "physics/pmap_cache.h"
#include "physics/scene.h"
#include "physics/triangle_mesh.h"

phys::Actor* PhysicsSystem::CreateMeshActor(uint32_t numVertices, const Vector3* vertices, uint32_t numTriangles,
                                            const uint32_t* triangles, float mass, bool usePMap, uint16_t material) {
    if (!scene) return nullptr;
    phys::TriangleMeshDesc meshDesc;
    meshDesc.numVertices = numVertices;
    meshDesc.numTriangles = numTriangles;
    meshDesc.points = vertices;
    meshDesc.triangles = triangles;

    MemoryWriteBuffer cooked;
    if (!phys::CookTriangleMesh(meshDesc, cooked)) return nullptr;
    phys::TriangleMesh* mesh = scene->CreateTriangleMesh(MemoryReadBuffer(cooked.data));
    if (!mesh) return nullptr;
    if (usePMap) AttachCachedPMap(*mesh);

    phys::ActorDesc desc;
    desc.kind = phys::ShapeKind::Mesh;
    desc.mesh = mesh;
    desc.mass = mass;
    desc.material = material;
    phys::Actor* actor = scene->CreateActor(desc);
    if (!actor) scene->ReleaseTriangleMesh(mesh);
    return actor;
}
