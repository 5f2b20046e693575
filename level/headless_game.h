#pragma once
// A level played without window, GL context or sound device, through the same Level::Frame
// as the game, with a frame time of exactly 1/60 s and scripted actions: the simulator, the
// benchmarks and the tests all play this way.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/random.h"
#include "level/level.h"
#include "level/level_sounds.h"
#include "level/level_view.h"
#include "level/sound_voices.h"
#include "physics/physics_system.h"
#include "resources/resource_manager.h"

struct RecordedEvent {
    int frame;
    std::string object, kind, text;
};

struct RecordedSound {
    int frame;
    std::string name;
    int32_t volume;
    bool positional;    // a contact sound, placed in the world
    Vector3 position;   // where, for a positional sound
};

class HeadlessGame : public LevelObserver, public LevelSounds {
public:
    static constexpr float kFrameTime = 1.0f / 60.0f;

    // Media is found in gameFolder/Media, as the game finds it beside itself. A view, when
    // given, is shown the frames as a window would draw them.
    explicit HeadlessGame(uint32_t seed, const std::string& gameFolder = ".", LevelView* view = nullptr);
    ~HeadlessGame() override;

    // False when the level does not load; errors then holds every message the game would show,
    // the loader's and its closing "Error loading level".
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
    // Every sound the game would start, in order: contact sounds, the music, the whoosh.
    std::vector<RecordedSound> sounds;
    std::vector<RecordedEvent> switchedOff;  // text: the reason

    void OnEvent(const GameObject& object, const std::string& event) override;
    void OnMessage(const GameObject& object, const std::string& content) override;
    void OnSwitchedOff(const GameObject& object, const std::string& reason) override;
    void PlayContactSound(const std::string& name, const Vector3& position, int32_t volume) override;
    bool PlayMusic(const std::string& name, int32_t volume) override;
    void RepeatMusic(int32_t volume) override;
    void StopMusic() override;
    void PlaySound(const std::string& name, int32_t volume) override;

private:
    // The frame a player holding these actions would give: an action is released in the
    // first frame that no longer holds it.
    FrameInput Sample(uint32_t actions);
    double Now() const { return double(frame) * kFrameTime; }
    void Record(ResourceType type, const std::string& name, int32_t volume, const Vector3& position);

    Random random;
    PhysicsSystem physics;
    ResourceManager resources;
    SoundVoices voices{resources};
    std::string music;
    std::unique_ptr<Level> level;
    uint32_t held = 0;
    int frame = 0;
};
