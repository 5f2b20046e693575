#include "tools/tool/headless_game.h"

#include "engine/player_keys.h"
#include "level/fly_over.h"
#include "objects/game_object.h"

void ScriptedKeys::ReadKeyTable(uint8_t table[256]) {
    for (int i = 0; i < 256; ++i) table[i] = 0;
    for (uint8_t key : held) table[key] = 0x80;
}

void ScriptedKeys::ReadCursor(int& x, int& y, platform::ScreenRect& windowRect) {
    x = y = 0;
    windowRect = {};
}

HeadlessGame::HeadlessGame(uint32_t seed) : random(seed) {
    physics.Startup();
    physics.SetContactSoundPlayer(this);
    input.Init(&keys);
    BindPlayerKeys(input);
    LevelServices services;
    services.physics = &physics;
    services.random = &random;
    services.observer = this;
    services.showMessage = [this](const std::string& text) { errors.push_back(text); };
    level = std::make_unique<Level>(std::move(services));
}

HeadlessGame::~HeadlessGame() { level.reset(); }

bool HeadlessGame::Load(const std::string& path) { return level->Load(path); }

// Each listed action holds its first bound key, as a player pressing that key would.
void HeadlessGame::Sample(uint32_t actions) {
    keys.held.clear();
    for (uint8_t action = ActionTurnLeft; action <= ActionNudge; ++action) {
        if (!(actions & (1u << action))) continue;
        const std::vector<uint8_t>* bound = input.BoundKeys(action);
        if (bound && !bound->empty()) keys.held.push_back(bound->front());
    }
    input.Update();
}

void HeadlessGame::PlayFrame(uint32_t actions) {
    Sample(actions);
    level->SetIntro(false);
    level->Frame(SampleFrame(input, double(frame) * kFrameTime, kFrameTime, kFrameTime));
    ++frame;
}

bool HeadlessGame::FlyOverFrame(uint32_t actions, float t) {
    Sample(actions);
    level->SetIntro(true);
    level->Frame(SampleFrame(input, double(frame) * kFrameTime, kFrameTime, kFrameTime));
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

void HeadlessGame::PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) {
    sounds.push_back({frame, name, volume, position});
}
