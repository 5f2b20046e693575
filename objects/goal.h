#pragma once
#include "objects/triggered_game_object.h"

// Collects every ball that enters while enabled ("Score", and a fountain); pushes anything
// else straight out. "Disable" and "Enable" switch it.
class Goal : public TriggeredGameObject {
public:
    Goal(Level& level, std::string name, float x, float y, float quota, float radius);
    void HandleMessage(const QueuedMessage& message) override;
    void Update() override;
    const char* KindName() const override { return "Goal"; }
    bool IsEnabled() const { return enabled; }

private:
    float radius;
    float quota;  // the level keeps its own copy, which the rules read
    bool enabled = true;
};
