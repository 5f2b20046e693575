#include "level/level.h"

#include <algorithm>
#include <cassert>
#include <cstdio>

#include "core/random.h"
#include "formats/model.h"
#include "level/level_file.h"
#include "level/level_sounds.h"
#include "level/level_view.h"
#include "level/object_kinds.h"
#include "objects/actor_group.h"
#include "objects/ball.h"
#include "objects/contact_sounds.h"
#include "objects/game_world.h"
#include "objects/goal.h"
#include "objects/particle_system.h"
#include "physics/actor.h"
#include "physics/physics_system.h"
#include "resources/resource_manager.h"

namespace {

constexpr int kParticleCount = 5000;
// Before the first frame the camera heads for a point above the origin.
constexpr float kStartHeight = 40.0f;
constexpr float kCameraRate = 3.0f;
constexpr int32_t kMusicVolume = -2500;
constexpr int32_t kStartSoundVolume = -1500;

}  // namespace

Level::Level(LevelServices given) : services(std::move(given)), classModels(services.mediaFolder) {
    if (services.physics) {
        SetUpGameWorld(*services.physics);
        services.physics->SetContactListener(this);
        services.physics->SetFaultListener(this);
    }
}

Level::~Level() {
    Clear();
    if (services.physics) {
        services.physics->RemoveContactListener(this);
        services.physics->RemoveFaultListener(this);
    }
}

Random& Level::GetRandom() const {
    assert(services.random && "every random effect draws from the one source the level is given");
    return *services.random;
}

Model* Level::ClassModel(const std::string& className) {
    const ObjectKind* kind = FindObjectClass(className);
    return kind ? classModels.Get(kind->model) : nullptr;
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
    zoom = 0.0f;
    contacts.clear();
    switchedOff.clear();
    if (services.sounds) services.sounds->StopMusic();
    particles.reset();
}

// The pictures every level needs must be there before anything is built; the view draws them.
bool Level::LoadResources() {
    assert(services.resources && "a level loads its pictures through the resource manager");
    ResourceManager& resources = *services.resources;
    if (!resources.Get(ResourceTextureCube, "sky")) {
        Show("Error loading skybox");
        return false;
    }
    if (!resources.Get(ResourceTexture2D, "UI_dialogue")) {
        Show("Error loading goal text");
        return false;
    }
    if (!resources.Get(ResourceTexture2D, "UI_dialogue_controls")) {
        Show("Error loading control text");
        return false;
    }
    if (!resources.Get(ResourceTexture2D, "intro_t")) {
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
    // Well-formed XML with the wrong root, or none, is only found wrong after the fixed
    // resources, as the game always did.
    if (!read && !file.wellFormed) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }
    if (!LoadResources()) return false;
    camera.SetTargetPosition(0, 0, kStartHeight);
    camera.SetTargetLookAt(0, 0, 0);
    camera.SetLookAtRate(kCameraRate);
    camera.SetPositionRate(kCameraRate);
    if (!read) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }

    levelName = file.name;
    levelDescription = file.description;
    BuildTracks(file);
    BuildObjects(file);

    if (services.sounds) {
        services.sounds->PlayMusic("audiotrack1", kMusicVolume);
        services.sounds->PlaySound("comet_1", kStartSoundVolume);
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

void Level::OnContactNotify(const phys::ContactPair& pair, uint32_t) { contacts.push_back(pair); }

// Only pairs with a ball count; the actors are still alive, since nothing is released between
// the step and this.
void Level::HandleContacts() {
    for (const phys::ContactPair& pair : contacts) {
        const int side = pair.actors[0]->GetGroup() == GroupBall ? 0 : 1;
        phys::Actor* ball = pair.actors[side];
        phys::Actor* other = pair.actors[1 - side];
        if (ball->GetGroup() != GroupBall) continue;
        GameObject* current = GetCurrentBall();
        if (current && current->GetActor() == ball) current->RaiseEvent("Contact");
        const ContactSound sound = ChooseContactSound(other->GetGroup(), pair.sumNormalForce);
        if (sound.name && services.sounds)
            services.sounds->PlayContactSound(sound.name, ball->GetGlobalPosition(), sound.volume);
    }
    contacts.clear();
}

void Level::OnActorSwitchedOff(phys::Actor* actor, phys::Fault fault) { switchedOff.emplace_back(actor, fault); }

void Level::ReportSwitchedOff() {
    for (const auto& [actor, fault] : switchedOff) {
        const std::string reason = fault == phys::Fault::NotFinite
                                       ? "its position or motion stopped being a finite number"
                                       : "it went beyond the bounds the physics can hold";
        for (const auto& object : objects) {
            if (object->GetActor() != actor) continue;
            if (services.observer) {
                services.observer->OnSwitchedOff(*object, reason);
            } else {
                std::fprintf(stderr, "%s \"%s\" was switched off after %.2f s of play: %s\n", object->KindName(),
                             object->GetName().c_str(), elapsed, reason.c_str());
            }
        }
    }
    switchedOff.clear();
}
