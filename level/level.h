#pragma once
#include <string>

#include "graphics/camera.h"

class GameObject;

// The one level every level file is loaded into, and one frame of its play.
class Level {
public:
    virtual ~Level() = default;
    // Loads a level file; false when it cannot be loaded.
    virtual bool Load(const std::string& path);
    virtual void Frame();
    void SetIntro(bool on) { intro = on; }
    bool IsFinished() const { return finished; }
    GameObject* GetCurrentBall() const { return currentBall; }
    GameObject* GetGoal() const { return goal; }
    PositionLookAtCamera& GetCamera() { return camera; }

protected:
    bool intro = false;
    bool finished = false;
    GameObject* currentBall = nullptr;
    GameObject* goal = nullptr;
    PositionLookAtCamera camera;
};
