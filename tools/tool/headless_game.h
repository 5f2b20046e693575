#pragma once
// A level played without window, GL context or sound device, through the same Level::Frame
// as the game, with a frame time of exactly 1/60 s and scripted actions.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/input_system.h"
#include "engine/random.h"
#include "level/level.h"
#include "level/level_view.h"
#include "physics/physics_system.h"
#include "platform/input_source.h"
#include "sound/contact_sound_player.h"

// Keys held down this frame, as a scripted keyboard.
class ScriptedKeys : public platform::InputSource {
public:
    void ReadKeyTable(uint8_t table[256]) override;
    void ReadCursor(int& x, int& y, platform::ScreenRect& windowRect) override;
    std::vector<uint8_t> held;
};

struct RecordedEvent {
    int frame;
    std::string object, kind, text;
};

struct RecordedSound {
    int frame;
    std::string name;
    int32_t volume;
    Vector3 position;
};

class HeadlessGame : public LevelObserver, public ContactSoundPlayer {
public:
    static constexpr float kFrameTime = 1.0f / 60.0f;

    explicit HeadlessGame(uint32_t seed);
    ~HeadlessGame() override;

    // False when the level does not load; the messages the game would show are in errors.
    bool Load(const std::string& path);
    // One frame with these actions held (bit n = action n).
    void PlayFrame(uint32_t actions);
    // One frame of the fly-over, t seconds into it; false once play has begun.
    bool FlyOverFrame(uint32_t actions, float t);

    Level& GetLevel() { return *level; }
    int FrameNumber() const { return frame; }

    std::vector<std::string> errors;
    std::vector<RecordedEvent> events;
    std::vector<RecordedEvent> messages;
    std::vector<RecordedSound> sounds;

    void OnEvent(const GameObject& object, const std::string& event) override;
    void OnMessage(const GameObject& object, const std::string& content) override;
    void PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) override;

private:
    void Sample(uint32_t actions);

    Random random;
    PhysicsSystem physics;
    ScriptedKeys keys;
    InputSystem input;
    std::unique_ptr<Level> level;
    int frame = 0;
};
