#include "objects/track.h"

#include "formats/model.h"
#include "objects/actor_group.h"
#include "physics/actor.h"
#include "physics/physics_system.h"

Track::Track(Level& level, std::string name, float x, float y, Model& collisionModel, Model& renderModel)
    : GameObject(level, std::move(name)) {
    renderModel.Translate(x, y, 0);
    if (&collisionModel != &renderModel) collisionModel.Translate(x, y, 0);
    PhysicsSystem* physics = Physics();
    if (physics && collisionModel.GetSubModelCount() > 0) {
        const SubModel& mesh = collisionModel.GetSubModel(0);
        actor = physics->CreateMeshActor(uint32_t(mesh.vertices.size()), mesh.vertices.data(),
                                         uint32_t(mesh.triangles.size()),
                                         reinterpret_cast<const uint32_t*>(mesh.triangles.data()), 0, false, 0);
        if (actor) actor->SetGroup(GroupTrack);
    }
    model = &renderModel;
}
