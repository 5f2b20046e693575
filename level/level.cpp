#include "level/level.h"

#include <algorithm>
#include <cstdio>

#include "engine/random.h"
#include "graphics/model.h"
#include "graphics/texture.h"
#include "level/level_file.h"
#include "objects/ball.h"
#include "objects/goal.h"
#include "objects/particle_system.h"
#include "physics/actor.h"
#include "physics/physics_system.h"
#include "resources/resource_manager.h"
#include "sound/sound_system.h"

namespace {

constexpr int kParticleCount = 5000;

}  // namespace

Level::Level(LevelServices services) : services(std::move(services)) {
    if (this->services.physics) this->services.physics->SetContactListener(this);
}

Level::~Level() {
    Clear();
    if (services.physics) services.physics->SetContactListener(nullptr);
}

Random& Level::GetRandom() const {
    // Without a source of its own a level still plays, from a fixed seed.
    static Random fallback;
    return services.random ? *services.random : fallback;
}

void Level::Show(const std::string& message) const {
    if (services.showMessage)
        services.showMessage(message);
    else
        std::fprintf(stderr, "%s\n", message.c_str());
}

// Everything back to how construction left it; the previous level's music stops.
void Level::Clear() {
    // Objects go last first, so nothing outlives what it points to.
    while (!objects.empty()) objects.pop_back();
    balls.clear();
    trackModels.clear();
    currentBall = -1;
    ballCount = 0;
    collected = 0;
    quota = 1.0f;
    won = lost = finished = intro = false;
    dialogueTimer = 0.0;
    elapsed = 0.0;
    timeLimit = kTimeLimit;
    goal = nullptr;
    levelName.clear();
    levelDescription.clear();
    camera = PositionLookAtCamera();
    tilt = 0.0f;
    baseGravity = Vector3(0, -60, 0);
    skyTexture = nullptr;
    goalText = controlText = nullptr;
    zoom = 0.0f;
    if (services.sound) services.sound->StopMusic();
    particles.reset();
}

bool Level::LoadResources() {
    ResourceManager& resources = ResourceManager::GetInstance();
    skyTexture = resources.GetCubeTexture("sky");
    if (!skyTexture) {
        Show("Error loading skybox");
        return false;
    }
    goalText = resources.GetTexture("UI_dialogue");
    if (!goalText) {
        Show("Error loading goal text");
        return false;
    }
    controlText = resources.GetTexture("UI_dialogue_controls");
    if (!controlText) {
        Show("Error loading control text");
        return false;
    }
    if (!resources.GetTexture("intro_t")) {
        Show("Error loading track texture");
        return false;
    }
    return true;
}

bool Level::Load(const std::string& path) {
    Clear();
    LevelFile file;
    std::string error;
    const bool read = ReadLevelFile(path, file, error);
    // A wrong root is only found wrong after the fixed resources, as the game always did.
    if (!read && file.rootName.empty()) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }
    if (!LoadResources()) return false;
    camera.SetTargetPosition(0, 0, 40);
    camera.SetTargetLookAt(0, 0, 0);
    camera.SetLookAtRate(3.0f);
    camera.SetPositionRate(3.0f);
    if (!read) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }

    levelName = file.name;
    levelDescription = file.description;
    BuildTracks(file);
    BuildObjects(file);

    if (services.sound) {
        services.sound->PlayMusic("audiotrack1", -2500);
        services.sound->PlaySound("comet_1", -1500);
    }
    particles = std::make_unique<ParticleSystem>(kParticleCount);
    particles->emitTimer = 0;
    return true;
}

GameObject* Level::AddObject(std::unique_ptr<GameObject> object) {
    GameObject* added = object.get();
    objects.push_back(std::move(object));
    if (added->IsBall()) {
        balls.push_back(static_cast<Ball*>(added));
        if (currentBall < 0) currentBall = 0;
        ++ballCount;
    }
    return added;
}

void Level::CollectBall(GameObject* object) {
    if (object->IsBall()) {
        ++collected;
        auto it = std::find(balls.begin(), balls.end(), object);
        if (it != balls.end()) {
            const int position = int(it - balls.begin());
            balls.erase(it);
            if (currentBall > position) --currentBall;
            if (currentBall >= int(balls.size())) currentBall = int(balls.size()) - 1;
        }
    }
    // Whoever still lists the actor this frame must not use it after it is gone.
    if (phys::Actor* actor = object->GetActor())
        for (const auto& other : objects) other->ForgetActor(actor);
    auto it = std::find_if(objects.begin(), objects.end(), [object](const auto& o) { return o.get() == object; });
    if (it == objects.end()) return;
    if (goal == object) goal = nullptr;
    objects.erase(it);
}

std::vector<GameObject*> Level::FindObjectsByName(const std::string& name) const {
    std::vector<GameObject*> found;
    for (const auto& object : objects)
        if (object->GetName() == name) found.push_back(object.get());
    return found;
}

GameObject* Level::GetCurrentBall() const {
    return currentBall >= 0 && currentBall < int(balls.size()) ? balls[size_t(currentBall)] : nullptr;
}

GameObject* Level::GetGoal() const { return goal; }

void Level::OnBallContact(phys::Actor* ball, phys::Actor*) {
    GameObject* current = GetCurrentBall();
    if (current && current->GetActor() == ball) current->RaiseEvent("Contact");
}
