#pragma once
#include <string>
#include <vector>

#include "objects/triggered_game_object.h"

// Moves whatever enters its trigger to an object named by one of its exits, keeping the
// velocity; "Enter" and "Exit" for the current ball. "Disable" and "Enable" switch it.
class TeleporterEntrance : public TriggeredGameObject {
public:
    TeleporterEntrance(Level& level, std::string name, float x, float y, float radius);
    void HandleMessage(const QueuedMessage& message) override;
    void Update() override;
    const char* KindName() const override { return "TeleporterEntrance"; }

    void AddExit(const std::string& exitName) { exits.push_back(exitName); }
    const std::vector<std::string>& GetExits() const { return exits; }
    bool IsEnabled() const { return enabled; }

private:
    // The object the actor goes to, or null when no exit name names one.
    GameObject* PickDestination();

    bool enabled = true;
    float radius;
    std::vector<std::string> exits;
    float swirlTimer = 0.05f;
};

// A marked place that entrances send things to.
class TeleporterExit : public GameObject {
public:
    TeleporterExit(Level& level, std::string name, float x, float y);
    Vector3 GetPosition() const override { return {x, y, 0}; }
    const char* KindName() const override { return "TeleporterExit"; }

private:
    float x, y;
};
