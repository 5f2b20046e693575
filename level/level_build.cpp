// Building a level's tracks and objects from its file.
#include "formats/max_model.h"
#include "level/level.h"
#include "level/level_file.h"
#include "level/object_kinds.h"
#include "objects/goal.h"
#include "objects/track.h"

namespace {

std::unique_ptr<MaxModel> LoadModel(const std::string& folder, const std::string& file) {
    auto model = std::make_unique<MaxModel>();
    if (!model->Load(folder + "/" + file)) return nullptr;
    return model;
}

}  // namespace

// A track whose models do not load is skipped, and the level goes on without it.
void Level::BuildTracks(const LevelFile& file) {
    for (const LevelTrack& t : file.tracks) {
        std::unique_ptr<MaxModel> collision = LoadModel(services.mediaFolder, t.collisionModel);
        if (!collision) continue;
        MaxModel* render = collision.get();
        std::unique_ptr<MaxModel> separate;
        if (t.renderModel != t.collisionModel) {
            separate = LoadModel(services.mediaFolder, t.renderModel);
            if (!separate) continue;
            render = separate.get();
        }
        AddObject(std::make_unique<Track>(*this, t.name, t.x, t.y, *collision, *render));
        trackModels.push_back(std::move(collision));
        if (separate) trackModels.push_back(std::move(separate));
    }
}

void Level::BuildObjects(const LevelFile& file) {
    for (const LevelObject& o : file.objects) {
        const ObjectKind* kind = FindObjectKind(o.kind);
        if (!kind) continue;  // an unknown kind: its rules have nothing to belong to
        GameObject* object = AddObject(kind->make(*this, o));
        if (o.kind == "Goal") {
            quota = o.quota;
            goal = static_cast<Goal*>(object);
        }
        for (const LevelRule& rule : o.rules)
            object->AddMessage(std::make_unique<Message>(Message{rule.event, rule.target, rule.content}));
    }
}
