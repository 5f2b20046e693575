#include "level/headless_game.h"

#include "level/fly_over.h"
#include "objects/game_object.h"

HeadlessGame::HeadlessGame(uint32_t seed, const std::string& gameFolder, LevelView* view)
    : random(seed), resources(gameFolder) {
    physics.Startup();
    LevelServices services;
    services.physics = &physics;
    services.random = &random;
    services.resources = &resources;
    services.mediaFolder = gameFolder + "/Media";
    services.sounds = this;
    services.observer = this;
    services.view = view;
    services.showMessage = [this](const std::string& text) { errors.push_back(text); };
    level = std::make_unique<Level>(std::move(services));
}

HeadlessGame::~HeadlessGame() { level.reset(); }

// The game follows any failed load with its own message, after whatever the loader showed.
bool HeadlessGame::Load(const std::string& path) {
    if (level->Load(path)) return true;
    errors.push_back("Error loading level");
    return false;
}

FrameInput HeadlessGame::Sample(uint32_t actions) {
    FrameInput input;
    input.now = double(frame) * kFrameTime;
    input.dt = kFrameTime;
    input.step = kFrameTime;
    for (int action = ActionTurnLeft; action <= ActionNudge; ++action) {
        const uint32_t bit = 1u << action;
        input.down[action] = (actions & bit) != 0;
        input.released[action] = (held & bit) && !(actions & bit);
    }
    held = actions;
    return input;
}

void HeadlessGame::PlayFrame(uint32_t actions) {
    level->SetIntro(false);
    level->Frame(Sample(actions));
    ++frame;
}

bool HeadlessGame::FlyOverFrame(uint32_t actions, float t) {
    level->SetIntro(true);
    level->Frame(Sample(actions));
    const bool goesOn = FlyOverStep(*level, t);
    if (!goesOn) level->SetIntro(false);
    ++frame;
    return goesOn;
}

void HeadlessGame::OnEvent(const GameObject& object, const std::string& event) {
    events.push_back({frame, object.GetName(), object.KindName(), event});
}

void HeadlessGame::OnMessage(const GameObject& object, const std::string& content) {
    messages.push_back({frame, object.GetName(), object.KindName(), content});
}

void HeadlessGame::OnSwitchedOff(const GameObject& object, const std::string& reason) {
    switchedOff.push_back({frame, object.GetName(), object.KindName(), reason});
}

void HeadlessGame::Record(ResourceType type, const std::string& name, int32_t volume, const Vector3& position) {
    if (voices.Start(type, name, Now())) sounds.push_back({frame, name, volume, type == ResourceSound3D, position});
}

void HeadlessGame::PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) {
    Record(ResourceSound3D, name, volume, position);
}

bool HeadlessGame::PlayMusic(const std::string& name, int32_t volume) {
    music = resources.Get(ResourceSound, name) ? name : "";
    if (music.empty()) return false;
    Record(ResourceSound, music, volume, Vector3(0, 0, 0));
    return true;
}

void HeadlessGame::RepeatMusic(int32_t volume) {
    if (!music.empty() && voices.CountPlaying(ResourceSound, music, Now()) == 0)
        Record(ResourceSound, music, volume, Vector3(0, 0, 0));
}

void HeadlessGame::StopMusic() {
    if (!music.empty()) voices.StopAll(ResourceSound, music);
}

void HeadlessGame::PlaySound(const std::string& name, int32_t volume) {
    Record(ResourceSound, name, volume, Vector3(0, 0, 0));
}
