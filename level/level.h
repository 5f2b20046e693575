#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/look_at_camera.h"
#include "core/vector3.h"
#include "level/frame_input.h"
#include "objects/model_cache.h"
#include "physics/scene.h"

class Ball;
class GameObject;
class Goal;
class LevelObserver;
class LevelSounds;
class LevelView;
class Model;
class ParticleSystem;
class PhysicsSystem;
class Random;
class ResourceManager;
struct LevelFile;

// What a level works with. Physics, the random source and the resources are needed to load
// and play; the rest may be absent (no sound, no window, nobody watching).
struct LevelServices {
    PhysicsSystem* physics = nullptr;
    Random* random = nullptr;
    ResourceManager* resources = nullptr;
    // Where class and track models are found.
    std::string mediaFolder = "Media";
    LevelSounds* sounds = nullptr;
    LevelView* view = nullptr;
    LevelObserver* observer = nullptr;
    // Shows a message to the player (a box in the game, a report line in tools).
    std::function<void(const std::string&)> showMessage;
};

// The one level every level file is loaded into: its objects, its balls and the current one,
// the rules' counters and clocks, the camera, the tilt and gravity, and its particles.
class Level : private phys::UserContactReport, private phys::UserFaultReport {
public:
    static constexpr double kTimeLimit = 180.0;

    explicit Level(LevelServices services = {});
    ~Level() override;
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

    // Builds the level from a file, after returning to a clean state. False when the file
    // cannot be read, its root is wrong, or a fixed resource is missing.
    virtual bool Load(const std::string& path);
    // One frame of play (or of the fly-over while intro is set).
    virtual void Frame(const FrameInput& input);

    // Appends the object (taking it over); a ball also joins the balls and may become current.
    GameObject* AddObject(std::unique_ptr<GameObject> object);
    // Counts the object if it is a ball, then removes and destroys it.
    void CollectBall(GameObject* object);
    std::vector<GameObject*> FindObjectsByName(const std::string& name) const;
    virtual GameObject* GetCurrentBall() const;

    void SetIntro(bool on) { intro = on; }
    bool IsIntro() const { return intro; }
    bool IsFinished() const { return finished; }
    bool IsWon() const { return won; }
    bool IsLost() const { return lost; }
    virtual GameObject* GetGoal() const;
    PositionLookAtCamera& GetCamera() { return camera; }

    const std::vector<std::unique_ptr<GameObject>>& GetObjects() const { return objects; }
    const std::vector<Ball*>& GetBalls() const { return balls; }
    int GetCurrentBallIndex() const { return currentBall; }
    void SetCurrentBallIndex(int index) { currentBall = index; }
    int GetBallCount() const { return ballCount; }
    int GetCollected() const { return collected; }
    float GetQuota() const { return quota; }
    // The quota as the player reads it: the stored value times 100, cut to a whole number,
    // so a file's 0.7 (stored a hair below) shows 69.
    int QuotaPercent() const { return int(double(quota) * 100); }
    double GetElapsed() const { return elapsed; }
    double GetDialogueTimer() const { return dialogueTimer; }
    float GetTilt() const { return tilt; }
    Vector3 GetBaseGravity() const { return baseGravity; }
    void SetBaseGravity(const Vector3& gravity) { baseGravity = gravity; }
    // The gravity the physics world gets for the current tilt.
    Vector3 TiltedGravity() const;
    const std::string& GetName() const { return levelName; }
    const std::string& GetDescription() const { return levelDescription; }
    ParticleSystem* GetParticles() const { return particles.get(); }

    // Which dialogues are due this frame: the goal before one second of play, the controls
    // from one to fifteen seconds, and the end dialogues while won or lost.
    struct Dialogues {
        bool goal, controls, win, lose;
    };
    Dialogues DueDialogues() const {
        return {elapsed < 1.0, elapsed > 1.0 && elapsed < 15.0, won, lost};
    }

    // For objects: the world they live in, the shared random source, the frame being played,
    // the model of their class (null when its file does not load).
    PhysicsSystem* Physics() const { return services.physics; }
    Random& GetRandom() const;
    const FrameInput& CurrentInput() const { return input; }
    LevelObserver* Observer() const { return services.observer; }
    Model* ClassModel(const std::string& className);

protected:
    // Contacts are only recorded during the step and acted on after it.
    void OnContactNotify(const phys::ContactPair& pair, uint32_t events) override;
    // "Contact" on the current ball and a sound for every ball contact of the step, in order.
    void HandleContacts();
    // Bodies the physics switched off during the step are reported by their objects' names.
    void OnActorSwitchedOff(phys::Actor* actor, phys::Fault fault) override;
    void ReportSwitchedOff();
    void Clear();
    bool LoadResources();
    void BuildTracks(const LevelFile& file);
    void BuildObjects(const LevelFile& file);
    void Play(float step);
    void UpdateObjects();
    void EmitParticles(bool nudged);
    void ApplyRules(float remaining);
    void Show(const std::string& message) const;

    LevelServices services;
    std::vector<std::unique_ptr<GameObject>> objects;
    std::vector<Ball*> balls;
    int currentBall = -1;
    int ballCount = 0;
    int collected = 0;
    float quota = 1.0f;
    bool won = false, lost = false, finished = false, intro = false;
    double dialogueTimer = 0.0;
    double elapsed = 0.0;
    double timeLimit = kTimeLimit;
    Goal* goal = nullptr;
    std::string levelName, levelDescription;
    PositionLookAtCamera camera;
    float tilt = 0.0f;
    Vector3 baseGravity{0, -60, 0};
    std::unique_ptr<ParticleSystem> particles;
    ModelCache classModels;
    std::vector<phys::ContactPair> contacts;
    std::vector<std::pair<phys::Actor*, phys::Fault>> switchedOff;
    std::vector<std::unique_ptr<class Model>> trackModels;
    FrameInput input;
    float zoom = 0.0f;
};
