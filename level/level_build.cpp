// Building a level's tracks and objects from its file.
#include "graphics/max_model.h"
#include "level/level.h"
#include "level/level_file.h"
#include "objects/ball.h"
#include "objects/bumpers.h"
#include "objects/goal.h"
#include "objects/teleporters.h"
#include "objects/track.h"
#include "objects/turbines.h"

namespace {

std::unique_ptr<MaxModel> LoadModel(const std::string& file) {
    auto model = std::make_unique<MaxModel>();
    if (!model->Load("Media/" + file)) return nullptr;
    return model;
}

std::unique_ptr<GameObject> MakeObject(Level& level, const LevelObject& o) {
    const std::string& k = o.kind;
    if (k == "Ball") return std::make_unique<Ball>(level, o.name, o.x, o.y, o.health, o.mass, o.radius);
    if (k == "DeadBall") return std::make_unique<DeadBall>(level, o.name, o.x, o.y, o.mass, o.radius);
    if (k == "Bumper") return std::make_unique<Bumper>(level, o.name, o.x, o.y, o.force, o.radius);
    if (k == "RevGravBumper") return std::make_unique<ReverseGravityBumper>(level, o.name, o.x, o.y, o.force, o.radius);
    if (k == "SpawnerBumper")
        return std::make_unique<SpawnerBumper>(level, o.name, o.x, o.y, o.force, o.radius, o.count);
    if (k == "FreeTurbine") return std::make_unique<FreeTurbine>(level, o.name, o.x, o.y, o.mass);
    if (k == "Turbine") return std::make_unique<Turbine>(level, o.name, o.x, o.y, o.speed);
    if (k == "Peg") return std::make_unique<Peg>(level, o.name, o.x, o.y, o.radius);
    if (k == "HingedDoor") return std::make_unique<HingedDoor>(level, o.name, o.x, o.y, o.mass);
    if (k == "TeleportEntrance") return std::make_unique<TeleporterEntrance>(level, o.name, o.x, o.y, o.radius);
    if (k == "TeleportExit") return std::make_unique<TeleporterExit>(level, o.name, o.x, o.y);
    if (k == "Goal") return std::make_unique<Goal>(level, o.name, o.x, o.y, o.quota, o.radius);
    return nullptr;
}

}  // namespace

// A track whose models do not load is skipped, and the level goes on without it.
void Level::BuildTracks(const LevelFile& file) {
    for (const LevelTrack& t : file.tracks) {
        std::unique_ptr<MaxModel> collision = LoadModel(t.collisionModel);
        if (!collision) continue;
        MaxModel* render = collision.get();
        std::unique_ptr<MaxModel> separate;
        if (t.renderModel != t.collisionModel) {
            separate = LoadModel(t.renderModel);
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
        std::unique_ptr<GameObject> made = MakeObject(*this, o);
        if (!made) continue;  // an unknown kind: its rules have nothing to belong to
        GameObject* object = AddObject(std::move(made));
        if (o.kind == "Goal") {
            quota = o.quota;
            goal = static_cast<Goal*>(object);
        }
        if (o.kind == "TeleportEntrance")
            for (const std::string& exit : o.exits) static_cast<TeleporterEntrance*>(object)->AddExit(exit);
        for (const LevelRule& rule : o.rules)
            object->AddMessage(std::make_unique<Message>(Message{rule.event, rule.target, rule.content}));
    }
}
